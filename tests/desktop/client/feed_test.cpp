#include "desktop/client/feed.h"

#include <gtest/gtest.h>

#include "desktop/main_loop.h"
#include "platform/foundation/joined.h"
#include "support/golden.h"

namespace tessary::client {
namespace {

using foundation::joined;

std::string rowsOf(const Offers& offers) {
    std::string rows;
    for (std::size_t i = 0; i < offers.offered.size(); ++i) {
        const auto& [id, name, detail] = offers.offered[i];
        rows +=
            id + " | " + name + " | " + detail + " | " + joined(offers.ways[i].words, " ") + '\n';
    }
    for (const auto& fault : offers.faults) rows += "fault: " + fault + '\n';
    return rows + (offers.more ? "and more" : "no more");
}

std::string told(const Failure& failure) { return failure.words + " [" + failure.command + "]"; }

/// A case is what is asked for, and what is printed: an answer, or "STATUS SIGNAL ERRORS".
std::string understood(const std::string& line) {
    const auto blank = line.find(' ');
    const auto kind = line.substr(0, blank), text = unescaped(line.substr(blank + 1));
    system::Ended ended{.output = text};
    if (text[0] != '{')
        ended = {.status = text[0] - '0', .signal = text[2] - '0', .errors = text.substr(4)};
    if (kind == "pin") {
        const auto id = pinnedBy(ended);
        return id ? *id : told(id.fault());
    }
    const auto offers = offersOf({*foundation::parse<Pinnable>(kind)}, ended);
    return offers ? rowsOf(*offers) : told(offers.fault());
}

TEST(Feed, IsUnderstoodOrSaysWhatToType) {
    expectTranscript("offers.txt", understood);
    EXPECT_EQ(understood("alarm {" + std::string(std::size_t{16} << 20U, ' ')),
              "tessary-widgets-feed answers with something else: expected at most 16777216 bytes, "
              "found more []");
}

/// Listed are two namespaces, of which there is more, and another has been asked for since.
TEST(Feed, IsAskedForMoreWhereThatMayFindWhatIsTyped) {
    Offers offers;
    for (const char* const nameSpace : {"My", "My App", "AWS/RDS"})
        offers.ways.push_back({.nameSpace = nameSpace});
    for (const bool more : {true, false})
        expectTranscript(more ? "scopes.txt" : "no_scopes.txt", [&](const std::string& line) {
            const std::map<Scope, bool> asked{{{}, more}, {{"AWS/RDS"}, true}, {{"My"}, false}};
            const bool nothingFound = line[0] == '-';
            const auto scope = scopeToAsk(line.substr(1), offers, asked, nothingFound);
            return scope ? "[" + joined(*scope, "] [") + "]" : "nothing";
        });
}

/// As a window does it; one that is called off, or hangs when its owner goes, is killed at once.
TEST(Chore, IsToldOfFromTheMainLoopUnlessCalledOff) {
    std::string said;
    const auto understand = [&](const Chore::Outcome& how) -> Chore::Next {
        const auto words = how ? how->output : how.fault().message();
        return [&said, words] { said += words; };
    };
    Chore chore;
    chore.start({.words = {"echo", "one"}}, understand);
    EXPECT_TRUE(chore.running());
    EXPECT_TRUE(until([&] { return said == "one\n"; })) << said;
    EXPECT_FALSE(chore.running());
    const auto begun = std::chrono::steady_clock::now();
    chore.start({.words = {"sleep", "60"}}, understand);
    chore.start({.words = {"echo", "two"}, .time = std::chrono::seconds{60}}, understand);
    EXPECT_TRUE(until([&] { return said == "one\ntwo\n"; })) << said;
    chore.start({.words = {"sleep", "60"}}, understand);
    chore.cancel();
    runFor(std::chrono::milliseconds{50});
    EXPECT_EQ(said, "one\ntwo\n");
    EXPECT_LT(std::chrono::steady_clock::now() - begun, std::chrono::seconds{5});
    chore.start({.words = {"no-such-program"}}, understand);
    EXPECT_TRUE(until([&] { return said.ends_with("No such file or directory"); })) << said;
}

}  // namespace
}  // namespace tessary::client
