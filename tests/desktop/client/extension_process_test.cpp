#include "desktop/client/extension_process.h"

#include <algorithm>
#include <csignal>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <thread>

#include "desktop/main_loop.h"
#include "support/container.h"
#include "support/golden.h"

namespace tessary::client {
namespace {

using namespace std::chrono_literals;

// Stands in for the extension. Its n-th start behaves as its n-th word says, later ones as the
// last.
constexpr const char* standIn = R"(
echo start >>"$0.starts"
n=$(wc -l <"$0.starts")
[ $n -le $# ] || n=$#
shift $((n - 1))
case $1 in
    hang) cat >/dev/null; exit ;;
    stay) echo $$ >"$0.pid"; exec sleep 30 2>/dev/null ;;
    deaf) exit 3 ;;
    dumb) exec >/dev/null ;;
esac
while read -r line; do
    echo "$line" >>"$0.asked"
    id=${line#*:} id=${id%%,*}
    case $1 in
        crash) kill -SEGV $$ ;;
        garbage) echo 'assertion failed' ;;
        deep) printf "{\"id\":$id,\"x\":"; head -c 5000000 /dev/zero | tr '\0' '['; echo ;;
        endless) head -c 70000000 /dev/zero | tr '\0' ' '; sleep 30 ;;
        noisy) yes `printf 'no\033paper'` >&2 ;;
        other) echo '{"id":77,"error":"of another"}' ;;
        half) echo "{\"id\":$id,\"error\":\"$id\"}"; exit ;;
        twice) echo "{\"id\":$id,\"error\":\"$id\"}" ; echo "{\"id\":$id,\"error\":\"$id\"}" ;;
        *) echo "{\"id\":$id,\"error\":\"$id\"}" ;;
    esac
done
[ ! -e "$0.ends" ] || echo end >>"$0.ends"
)";

class Stand : public testing::Test {
protected:
    Stand() {
        std::signal(SIGPIPE, SIG_IGN);  // as the program does
        std::ofstream{script_} << standIn;
    }
    std::vector<std::string> command(const std::string& behaviours) const {
        return words("/bin/sh " + script_ + " " + behaviours);
    }
    long lines(const std::string& suffix) const {
        return std::ranges::count(contents(script_ + suffix), '\n');
    }
    void ask(Extension& extension, int questions) {
        for (int i = 0; i < questions; ++i)
            extension.ask({.request = "list"},
                          [this](const Reply& reply) { answers_.push_back(*reply.error); });
    }

    Container container_{};
    std::string script_ = container_ / "extension";
    std::vector<std::string> answers_{};
    static constexpr Patience hasty{60s, 300ms, 1ms, 4ms};
};

// Whatever happens on the way, each question is answered once and in order; without a pause, as no
// two failures come in a row.
TEST_F(Stand, EveryQuestionIsAnsweredInTheEnd) {
    expectTranscript("starts.txt", [this](const std::string& behaviours) {
        std::filesystem::remove(script_ + ".starts");
        answers_.clear();
        ExtensionProcess extension{command(behaviours), {.reply = 2s, .firstPause = 60s}};
        ask(extension, 3);
        EXPECT_TRUE(answers_.empty()) << "answered within the call";
        EXPECT_TRUE(until([&] { return answers_.size() >= 3; })) << behaviours;
        EXPECT_EQ(answers_, words("1 2 3")) << behaviours;
        return std::to_string(lines(".starts"));
    });
}

// By itself after each answer, or by the end of its input.
TEST_F(Stand, EndsUnaskedAndComesBackWhenItIsAsked) {
    std::ofstream{script_ + ".ends"}.flush();
    for (const auto& [behaviour, ends] : {std::pair{"half", 0}, {"good", 3}}) {
        answers_.clear();
        std::filesystem::remove(script_ + ".starts");
        ExtensionProcess extension{command(behaviour), {.idle = 20ms}};
        for (int round = 1; round <= 3; ++round) {
            EXPECT_FALSE(extension.running());
            ask(extension, 1);
            EXPECT_TRUE(extension.running());
            EXPECT_TRUE(until([&] { return !extension.running(); })) << behaviour;
        }
        EXPECT_EQ(answers_, words("1 2 3"));
        EXPECT_EQ(lines(".starts"), 3);
        EXPECT_TRUE(until([&, due = ends] { return lines(".ends") == due; }));
    }
}

// A renewal asks another process for what is unanswered, without complaint; a preparation starts
// one unless one runs.
TEST_F(Stand, IsRenewedAndPrepared) {
    std::ofstream{script_ + ".ends"}.flush();
    ExtensionProcess extension{command("hang good"),
                               {.idle = 200ms, .reply = 60s, .firstPause = 60s}};
    extension.moveTo({});
    EXPECT_FALSE(extension.running());
    ask(extension, 2);
    EXPECT_TRUE(until([&] { return lines(".starts") == 1; }));
    testing::internal::CaptureStderr();
    extension.moveTo({});
    EXPECT_TRUE(until([&] { return answers_.size() == 2; }));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(answers_, words("1 2"));
    extension.moveTo({});
    EXPECT_FALSE(extension.running());
    EXPECT_TRUE(until([&] { return lines(".ends") == 1; }));
    for (int i = 0; i < 3; ++i) extension.prepare();
    EXPECT_TRUE(extension.running());
    extension.moveTo("Asia/Tokyo");
    ask(extension, 1);
    EXPECT_TRUE(until([&] { return answers_.size() == 3; }));
    EXPECT_NE(contents(script_ + ".asked").find(R"("timeZone":"Asia/Tokyo")"), std::string::npos);
    EXPECT_TRUE(until([&] { return !extension.running(); }));
    EXPECT_EQ(lines(".starts"), 3);
}

TEST_F(Stand, TakesWithItWhatItDroppedAndDidNotEnd) {
    pid_t dropped = 0;
    {
        ExtensionProcess extension{command("stay"), {}};
        extension.prepare();
        EXPECT_TRUE(until([&] { return bool{std::ifstream{script_ + ".pid"} >> dropped}; }));
        extension.moveTo({});
        EXPECT_EQ(::kill(dropped, 0), 0);
    }
    // With no loop that would do it later.
    for (int i = 0; i < 150 && ::kill(dropped, 0) == 0; ++i) std::this_thread::sleep_for(10ms);
    EXPECT_NE(::kill(dropped, 0), 0);
}

// Marked, cleaned, and so much of it; then how much more there was.
TEST_F(Stand, IsHeardComplainingForAWhile) {
    testing::internal::CaptureStderr();
    ExtensionProcess extension{command("noisy noisy good"), hasty};
    ask(extension, 1);
    EXPECT_TRUE(until([&] { return answers_.size() == 1; }));
    const auto said = testing::internal::GetCapturedStderr();
    EXPECT_THAT(said, testing::StartsWith("tessary-widgets-desktop: extension: no␛paper\n"));
    EXPECT_THAT(said, testing::HasSubstr(" bytes more left out\n"));
    EXPECT_NEAR(static_cast<double>(said.size()), 65'536, 500);
}

// Each failure is told, and that they are over. Hurried, it is asked again after the first pause,
// however long the pause would be.
TEST_F(Stand, TellsItsTroubleAndCanBeHurried) {
    std::vector<int> told;
    ExtensionProcess extension{command("deaf deaf deaf deaf deaf deaf deaf deaf good"),
                               {.firstPause = 100ms}};
    extension.follow([&](const Trouble& trouble) { told.push_back(trouble.failures); });
    ask(extension, 1);
    const auto begun = std::chrono::steady_clock::now();
    EXPECT_TRUE(until([&] { return extension.hurry(), !answers_.empty(); }));
    EXPECT_GE(std::chrono::steady_clock::now() - begun, 7 * 100ms);
    EXPECT_TRUE(until([&] { return told == std::vector{1, 2, 3, 4, 5, 6, 7, 8, 0}; }));
}

// One that nobody waits for is not tried again.
TEST_F(Stand, OneThatIsNotInstalledIsFoundOnceItIs) {
    const std::string late = container_ / "late";
    ExtensionProcess extension{{late, "good"}, hasty}, unasked{{late, "good"}, hasty};
    ask(extension, 2);
    unasked.prepare();
    runFor(20ms);
    EXPECT_TRUE(answers_.empty());
    std::ofstream{late + ".new"} << "#!/bin/sh" << standIn;
    std::filesystem::permissions(late + ".new", std::filesystem::perms::owner_all);
    std::filesystem::rename(late + ".new", late);
    EXPECT_TRUE(until([&] { return answers_.size() == 2; }));
    EXPECT_EQ(answers_, words("1 2"));
    EXPECT_FALSE(unasked.running());
}

// Then the reason answers what is asked, after the call and once.
TEST_F(Stand, PatienceMayEnd) {
    for (const auto& words : {command("deaf"), command("garbage"), {container_ / "nowhere"}}) {
        answers_.clear();
        ExtensionProcess extension{words, {.tries = 1}};
        ask(extension, 2);
        EXPECT_TRUE(answers_.empty()) << "answered within the call";
        EXPECT_TRUE(until([&] { return answers_.size() == 2; }));
        EXPECT_EQ(answers_.front().substr(0, 14), "the extension ");
    }
    EXPECT_EQ(lines(".starts"), 2);
}

TEST(Extension, PausesDoubleUpToTheLongest) {
    const std::pair<int, std::chrono::seconds> table[] = {
        {1, 0s}, {2, 1s}, {3, 2s}, {4, 4s}, {10, 256s}, {11, 300s}, {1'000'000, 300s},
    };
    for (const auto& [failures, pause] : table) EXPECT_EQ(pauseAfter(failures, {}), pause);
}

}  // namespace
}  // namespace tessary::client
