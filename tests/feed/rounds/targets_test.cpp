#include "feed/rounds/targets.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>

#include "platform/foundation/json_writing.h"
#include "support/golden.h"

namespace tessary::rounds {
namespace {

constexpr std::int64_t intervalSeconds = 60;

/// Alarms that changed one minute after the other.
Answered answered(std::int64_t count) {
    Answered answer;
    for (std::int64_t i = 0; i < count; ++i)
        answer.alarms.push_back({"alarm " + std::to_string(i), "p", "r", i * 60'000, "why"});
    return answer;
}

/// "3" alarms in ALARM, "failed", "expired", or "expired:SECONDS" for when the sign-in ended.
Outcome outcome(const std::string& word) {
    if (word == "failed") return Failed{"no answer"};
    if (word == "expired") return SignInExpired{.words = "sign in"};
    if (word.starts_with("expired:"))
        return SignInExpired{std::stoll(word.substr(8)) * 1000, "sign in"};
    return answered(std::stoll(word));
}

std::string described(const std::optional<snapshot::AlarmsSnapshot>& file) {
    if (!file) return "no file";
    std::string said = file->state + ", updated " + std::to_string(file->updatedMs / 1000) + ", " +
                       std::to_string(file->firing) + " firing, " +
                       std::to_string(file->topAlarms.size()) + " listed\n";
    for (const auto& target : file->targets)
        said += target.region + ' ' + std::to_string(target.firing) +
                (target.authExpired ? " expired" : "") + (target.failed ? " failed" : "") + '\n';
    return said;
}

/// A case is what rounds brought: TARGET=OUTCOME@SECONDS.
TEST(Targets, MakeTheFileThatTheirAnswersAllow) {
    expectTranscript("targets.txt", [](const std::string& line) {
        std::vector<KnownTarget> targets;
        for (const auto& [name, said] : pairs(line)) {
            const auto at = std::stoll(said.substr(said.find('@') + 1)) * 1000;
            auto target = std::ranges::find(targets, name, &KnownTarget::region);
            if (target == targets.end())
                target = targets.insert(target, {.region = name, .askedMs = at});
            *target = learned(*target, outcome(said.substr(0, said.find('@'))), at);
        }
        return described(alarmsFile(targets, intervalSeconds));
    });
}

/// Whatever two targets answer in three rounds: a file whose widget would show an all-clear has
/// been seen by each that is not paused, within the time that the widget takes for current.
TEST(Targets, NeverGiveAnAllClearThatNobodyHasSeen) {
    const std::vector<std::string> outcomes{"0", "2", "failed", "expired", "expired:-900"};
    constexpr int rounds = 3;
    constexpr std::int64_t apart = 150'000, stale = 180'000;
    for (int sequence = 0; sequence < 15'625; ++sequence) {
        std::vector<KnownTarget> targets{{.region = "a", .askedMs = apart},
                                         {.region = "b", .askedMs = apart}};
        std::map<std::string, std::int64_t> seenClear;
        int rest = sequence;
        for (int round = 1; round <= rounds; ++round)
            for (auto& target : targets) {
                const auto& word = outcomes[static_cast<std::size_t>(rest % 5)];
                rest /= 5;
                target = learned(target, outcome(word), round * apart);
                if (word == "0") seenClear[target.region] = round * apart;
                if (word == "2") seenClear.erase(target.region);
            }
        const auto file = alarmsFile(targets, intervalSeconds);
        if (!file || file->firing > 0 || rounds * apart - file->updatedMs > stale) continue;
        for (const auto& target : targets) {
            if (target.authExpired) continue;
            ASSERT_TRUE(seenClear.contains(target.region)) << sequence;
            ASSERT_LE(rounds * apart - seenClear[target.region], stale) << sequence;
        }
    }
}

TEST(Targets, ListTheNewestFiftyOfAll) {
    std::vector<KnownTarget> targets{{.region = "a"}, {.region = "b"}};
    targets[0] = learned(targets[0], answered(40), 0);
    targets[1] = learned(targets[1], answered(1000), 0);
    targets[1].alarms.back().updatedMs.reset();
    const auto file = alarmsFile(targets, intervalSeconds);
    EXPECT_EQ(file->firing, 1040);
    ASSERT_EQ(file->topAlarms.size(), 50U);
    EXPECT_EQ(file->topAlarms.front().updatedMs, 999 * 60'000);
    EXPECT_TRUE(
        std::ranges::is_sorted(file->topAlarms, std::greater{}, &snapshot::Alarm::updatedMs));
    EXPECT_EQ(foundation::decodeJSON<KnownTarget>(foundation::toJSON(targets[1])).value(),
              targets[1]);
}

}  // namespace
}  // namespace tessary::rounds
