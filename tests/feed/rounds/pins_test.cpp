#include "feed/rounds/pins.h"

#include <gtest/gtest.h>

#include "support/golden.h"

namespace tessary::rounds {
namespace {

using Pin = snapshot::MetricPin;

PinOutcome<Pin> outcome(const std::string& word, std::int64_t round) {
    if (word == "ok") return Refreshed<Pin>{{.id = "a", .points = {{round, 1}}}};
    if (word == "expired") return SignInExpired{.words = "sign in"};
    return Unanswered{"no answer", word == "gone"};
}

/// A case is what the rounds of a pin brought; of each, what its file says then.
TEST(Pins, TellTheirOwnTrouble) {
    expectTranscript("pins.txt", [](const std::string& line) {
        KnownPin<Pin> known{.shown = {.id = "a"}};
        std::string said;
        std::int64_t round = 0;
        for (const auto& word : words(line)) {
            ++round;
            known = learned(known, outcome(word, round), round);
            const auto file = pinsFile<Pin>({known}, 60, round);
            EXPECT_EQ(file.updatedMs, round);
            const Pin& pin = file.pins.front();
            said += (pin.points.empty() ? "nothing" : "of " + std::to_string(pin.points[0].t)) +
                    (pin.authExpired ? ", expired" : "") + (pin.error ? ", " + *pin.error : "") +
                    '\n';
        }
        return said;
    });
}

}  // namespace
}  // namespace tessary::rounds
