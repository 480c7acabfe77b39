#include "desktop/client/messages.h"

#include <gtest/gtest.h>

#include "desktop/client/link.h"
#include "platform/foundation/json_writing.h"
#include "support/golden.h"

namespace tessary::client {
namespace {

using foundation::toJSON;

/// Each entry, and when to ask again; a picture of the one before is the same.
std::string told(const Timeline& timeline) {
    std::ostringstream out;
    Picture last;
    for (const auto& [date, url, text, picture] : timeline.entries) {
        out << date << ' ' << url.value_or("no link") << ' ' << text << ' ';
        out << (picture == last ? "the same" : "a picture") << '\n';
        last = picture;
    }
    out << "after " << timeline.after;
    return out.str();
}

/// A case is what was asked, of pins with "entities" for those of some identifiers and "unlisted"
/// for the timeline of a widget that no list has, and the reply.
std::string understood(const std::string& line) {
    const auto blank = line.find(' ');
    Request request{.request = line.substr(0, blank), .widget = "k", .family = "f", .scale = 2};
    if (request.request == "entities") request = {.request = "pins", .ids = {{"b"}}};
    if (request.request == "unlisted") request.request = "timeline", request.widget = "u";
    const auto reply =
        decodeReply(line.substr(blank + 1), request,
                    {{.kind = "k", .sizes = {{.family = "f", .width = 9, .height = 4}}}});
    if (!reply) return "fault: " + reply.fault().message();
    const auto id = std::to_string(reply->id) + ": ";
    if (reply->error) return id + "error " + *reply->error;
    if (reply->timeline) return id + told(*reply->timeline);
    if (!reply->pins) return id + toJSON(reply->kinds);
    const auto& [type, initial, pins] = *reply->pins;
    return id + type + ' ' + toJSON(initial) + ' ' + toJSON(pins);
}

TEST(Messages, AreUnderstoodAsWhatWasAskedOrNamedAFault) {
    expectTranscript("replies.txt", understood);
    EXPECT_EQ(understood("list " + std::string(protocol::replyLimits.bytes + 1, ' ')),
              "fault: expected at most 67108864 bytes, found more");
}

TEST(Messages, NameLinksOfWhichOnlyTheHostsAreOpened) {
    expectTranscript("links.txt", [](const std::string& link) {
        return isWidgetLink(unescaped(link)) ? "opened" : "left alone";
    });
}

}  // namespace
}  // namespace tessary::client
