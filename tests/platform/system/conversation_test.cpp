#include "platform/system/conversation.h"

#include <array>
#include <csignal>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include "platform/system/files.h"
#include "support/fixtures.h"

namespace tessary::system {
namespace {

std::vector<Line> cut(std::string_view bytes, std::size_t step) {
    LineCutter cutter;
    for (std::size_t at = 0; at < bytes.size(); at += step) cutter.feed(bytes.substr(at, step));
    cutter.end();
    std::vector<Line> lines;
    while (const auto line = cutter.next()) lines.push_back(*line);
    EXPECT_EQ(cutter.waiting(), 0);
    return lines;
}

TEST(LineCutter, CutsTheSameLinesHoweverTheBytesCome) {
    const std::vector<Line> lines{{"one", false}, {"", false}, {"two\r", false}, {"rest", false}};
    for (std::size_t step = 1; step < 20; ++step) EXPECT_EQ(cut("one\n\ntwo\r\nrest", step), lines);
    EXPECT_EQ(cut("", 1), std::vector<Line>{});
    EXPECT_EQ(cut("\n", 1), std::vector<Line>{{}});
}

TEST(LineCutter, KeepsNothingOfALineThatIsTooLong) {
    const std::string longest(longestLine, 'x');
    for (const std::size_t step : {std::size_t{1000}, longestLine, 2 * longestLine}) {
        EXPECT_EQ(cut(longest + "\na", step), (std::vector<Line>{{longest, false}, {"a", false}}));
        EXPECT_EQ(cut(longest + "y\na\n", step), (std::vector<Line>{{"", true}, {"a", false}}));
        EXPECT_EQ(cut(longest + longest, step), (std::vector<Line>{{"", true}}));
    }
}

/// Two pipes with a conversation between them.
struct Talk {
    Talk() {
        std::array<int, 2> in{};
        std::array<int, 2> out{};
        if (::pipe(in.data()) != 0 || ::pipe(out.data()) != 0) std::abort();
        theirs = {in[0], out[1]};
        input = Descriptor{in[1]};
        output = Descriptor{out[0]};
        thread = std::thread{[this] {
            result = hold(theirs, [](const Line& line, const Send& send) {
                if (line.text == "silence") return std::string{};
                send(line.text + std::string(7000, '.'));
                send(std::string(7000, '.'));
                return std::string(6000, '.');
            });
            ::close(theirs.output);
        }};
    }
    ~Talk() { ::close(theirs.input); }
    void say(std::string_view text) const {
        EXPECT_EQ(::write(input.number(), text.data(), text.size()), std::ssize(text));
    }
    std::string hear() const { return contents("/dev/fd/" + std::to_string(output.number())); }

    Ends theirs{};
    Descriptor input{};
    Descriptor output{};
    std::thread thread{};
    foundation::Result<void> result{};
};

TEST(Conversation, TakesManyRequestsBeforeItsFirstAnswerIsRead) {
    Talk talk;
    std::string expected;
    std::string all;
    for (int i = 0; i < 200; ++i) {
        // More than a pipe holds, both ways.
        const std::string line = std::to_string(i) + std::string(2000, '-');
        all += line + "\nsilence\n";
        expected += line + std::string(20'000, '.') + "\n";
    }
    talk.say(all + "last");
    talk.input = Descriptor{};
    EXPECT_EQ(talk.hear(), expected + "last" + std::string(20'000, '.') + "\n");
    talk.thread.join();
    EXPECT_TRUE(talk.result);
}

TEST(Conversation, TakesInAsMuchAsItSaysAndThenWaits) {
    ::signal(SIGPIPE, SIG_IGN);
    Talk talk;
    const std::string line = std::string(99, '-') + '\n';
    ::fcntl(talk.input.number(), F_SETFL, O_NONBLOCK);
    std::size_t taken = 0;
    for (pollfd room{talk.input.number(), POLLOUT, 0}; ::poll(&room, 1, 300) > 0;)
        taken += line.size() * (::write(talk.input.number(), line.data(), line.size()) > 0);
    constexpr std::size_t most = std::size_t{4} << 20U;
    EXPECT_GE(taken, most);
    EXPECT_LE(taken, most + 65'536 + 10 * line.size());  // in the pipe, and answered
    talk.output = Descriptor{};
    talk.thread.join();
}

TEST(Conversation, EndsWhenNobodyListens) {
    ::signal(SIGPIPE, SIG_IGN);
    for (const char* said : {"", "one\n"}) {
        Talk talk;
        talk.output = Descriptor{};
        talk.say(said);
        talk.thread.join();  // though the input is open
        EXPECT_EQ(talk.result.fault().message(), "cannot write standard output: Broken pipe");
    }
}

}  // namespace
}  // namespace tessary::system
