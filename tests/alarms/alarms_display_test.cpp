#include "alarms/alarms_display.h"

#include <gtest/gtest.h>

#include "support/container.h"

namespace tessary::alarms {
namespace {

const AlarmsSnapshot example = foundation::decodeJSON<AlarmsSnapshot>(exampleAlarms).value();

TEST(AlarmsDisplay, WatchesInOneStateOnly) {
    using namespace std::string_literals;
    EXPECT_EQ((AlarmsDisplay{std::nullopt, exampleNow}).value().index(), 1);
    AlarmsSnapshot snapshot = example;
    for (const auto& state :
         {""s, "Watching"s, "WATCHING"s, "watching "s, "watching\0"s, "watchin"s, "off"s}) {
        snapshot.state = state;
        const AlarmsDisplay display{snapshot, exampleNow};
        EXPECT_TRUE(std::holds_alternative<AlarmsDisplay::NotWatching>(display.value())) << state;
    }
}

TEST(AlarmsDisplay, IsPausedWhereASignInExpired) {
    AlarmsSnapshot snapshot = example;
    snapshot.targets.assign(7, example.targets.back());
    EXPECT_EQ((AlarmsDisplay{snapshot, exampleNow}.watching()->paused), 7);
}

TEST(AlarmsDisplay, IsFreshForTwoMinutesAtLeast) {
    AlarmsSnapshot snapshot = example;
    snapshot.intervalSeconds = 39;
    for (const double late : {0.0, 0.001}) {
        const AlarmsDisplay display{snapshot, exampleUpdated + (120 + late)};
        EXPECT_EQ(display.watching()->stale, late > 0);
    }
}

}  // namespace
}  // namespace tessary::alarms
