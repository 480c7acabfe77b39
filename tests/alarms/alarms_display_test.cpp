#include "alarms/alarms_display.h"

#include <gtest/gtest.h>
#include <limits>

#include "support/container.h"

namespace tessary::alarms {
namespace {

constexpr auto longest = std::numeric_limits<std::int64_t>::max();
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
    for (const std::int64_t firing : {std::int64_t{0}, std::int64_t{-7}, longest, lowest}) {
        snapshot.firing = firing;
        EXPECT_EQ(watching(snapshot).firing, firing);
        EXPECT_EQ(watching(snapshot).alarms, example.topAlarms);
    }
    snapshot.targets.assign(7, example.targets.back());
    EXPECT_EQ(watching(snapshot).watched, 7);
    EXPECT_EQ(watching(snapshot).paused, 7);
    snapshot.targets.clear();
    EXPECT_EQ(watching(snapshot).watched + watching(snapshot).paused, 0);
}

TEST(AlarmsDisplay, IsStaleBeyondThreeIntervalsAndTwoMinutesAtLeast) {
    AlarmsSnapshot snapshot = example;
    const auto stale = [&](double age) { return watching(snapshot, exampleUpdated + age).stale; };
    for (const auto& [interval, limit] : std::vector<std::pair<std::int64_t, int>>{
             {0, 120}, {-5, 120}, {40, 120}, {41, 123}, {60, 180}, {300, 900}, {lowest, 120}}) {
        snapshot.intervalSeconds = interval;
        for (int age = -10; age <= limit + 10; ++age)
            ASSERT_EQ(stale(age), age > limit) << interval << ", " << age;
        EXPECT_TRUE(!stale(limit - 0.001) && stale(limit + 0.001) && stale(1e15)) << interval;
    }
    snapshot.intervalSeconds = longest;
    EXPECT_TRUE(!stale(2.7e19) && stale(2.8e19));
}

TEST(AlarmsDisplay, TakesUpdatesOfAnyTimeToTheMillisecond) {
    AlarmsSnapshot snapshot = example;
    for (const auto& [milliseconds, seconds] :
         std::vector<std::pair<std::int64_t, double>>{{1731772800123, 1731772800.123},
                                                      {-1, -0.001},
                                                      {longest, 9223372036854775.807},
                                                      {lowest, -9223372036854775.808}}) {
        snapshot.updatedMs = milliseconds;
        EXPECT_EQ(watching(snapshot).updated.seconds, seconds);
        EXPECT_EQ(watching(snapshot).stale, seconds < 0) << milliseconds;
    }
}

}  // namespace
}  // namespace tessary::alarms
