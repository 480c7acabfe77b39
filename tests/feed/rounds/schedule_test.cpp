#include "feed/rounds/schedule.h"

#include "support/golden.h"

namespace tessary::rounds {
namespace {

/// When rounds begin within an hour, of an interval of 20 minutes, where the first begins at 0. A
/// case is what happens: SIGN@SECONDS or SIGN@FROM-TO; rounds fail while "failing".
TEST(Schedule, MakesOneRoundOfManySigns) {
    expectTranscript("schedule.txt", [](const std::string& line) {
        std::string begun;
        Schedule schedule{0};
        for (int now = 0; now <= 3600; ++now) {
            bool isFailing = false;
            for (const auto& word : words(line)) {
                const auto at = word.find('@'), to = word.find('-');
                const int from = std::stoi(word.substr(at + 1));
                const int until = to == word.npos ? from : std::stoi(word.substr(to + 1));
                if (now < from || now > until) continue;
                if (word.starts_with("wake")) schedule.wake(now);
                if (word.starts_with("connect")) schedule.connect(now);
                if (word.starts_with("hasten")) schedule.hasten(now);
                if (word.starts_with("failing")) isFailing = true;
            }
            if (now < schedule.due()) continue;
            begun += std::to_string(now) + ' ';
            schedule.begin(now, 1200);
            schedule.end(now, isFailing);
        }
        return begun;
    });
}

}  // namespace
}  // namespace tessary::rounds
