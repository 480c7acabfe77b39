#include "alarms/alarms_display.h"

#include <gtest/gtest.h>
#include <limits>

#include "support/container.h"

namespace tessary::alarms {
namespace {

constexpr auto lowest = std::numeric_limits<std::int64_t>::min();

const AlarmsSnapshot example = foundation::decodeJSON<AlarmsSnapshot>(exampleAlarms).value();

AlarmsDisplay::Watching watching(const AlarmsSnapshot& snapshot, Date now = exampleNow) {
    return *AlarmsDisplay{snapshot, now}.watching();
}

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

TEST(AlarmsDisplay, PassesOnWhatTheSnapshotHolds) {
    AlarmsSnapshot snapshot = example;
    EXPECT_EQ(watching(snapshot),
              (AlarmsDisplay::Watching{4, 3, 1, exampleUpdated, false, example.topAlarms}));
    snapshot.targets.assign(7, example.targets.back());
    snapshot.firing = lowest;
    snapshot.updatedMs = lowest;
    EXPECT_EQ(
        watching(snapshot),
        (AlarmsDisplay::Watching{lowest, 7, 7, {-9223372036854775.808}, true, example.topAlarms}));
}

/// As snapshot/freshness.h has it.
TEST(AlarmsDisplay, IsStaleByThreeIntervalsAndTwoMinutesAtLeast) {
    AlarmsSnapshot snapshot = example;
    for (const auto& [interval, limit] : {std::pair{40, 120}, {41, 123}}) {
        snapshot.intervalSeconds = interval;
        EXPECT_FALSE(watching(snapshot, exampleUpdated + limit).stale);
        EXPECT_TRUE(watching(snapshot, exampleUpdated + (limit + 0.001)).stale);
    }
}

}  // namespace
}  // namespace tessary::alarms
