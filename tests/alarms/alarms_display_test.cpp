#include "alarms/alarms_display.h"

#include <gtest/gtest.h>
#include <limits>

#include "support/container.h"

namespace tessary::alarms {
namespace {

using foundation::decodeJSON;

constexpr auto longest = std::numeric_limits<std::int64_t>::max();
constexpr auto lowest = std::numeric_limits<std::int64_t>::min();

AlarmsSnapshot example() { return decodeJSON<AlarmsSnapshot>(exampleAlarms).value(); }

bool staleAt(const AlarmsSnapshot& snapshot, Date now) {
    return AlarmsDisplay{snapshot, now}.watching()->stale;
}

TEST(AlarmsDisplay, IsUnavailableWithoutASnapshot) {
    EXPECT_EQ((AlarmsDisplay{std::nullopt, exampleNow}),
              AlarmsDisplay{AlarmsDisplay::Unavailable{}});
}

TEST(AlarmsDisplay, IsNotWatchingInAnyOtherState) {
    using namespace std::string_literals;
    AlarmsSnapshot snapshot = example();
    for (const auto& state :
         {""s, "Watching"s, "WATCHING"s, "watching "s, "watching\0"s, "watchin"s, "off"s}) {
        snapshot.state = state;
        EXPECT_EQ((AlarmsDisplay{snapshot, exampleNow}),
                  AlarmsDisplay{AlarmsDisplay::NotWatching{}})
            << state;
    }
}

TEST(AlarmsDisplay, PassesOnWhatTheSnapshotHolds) {
    AlarmsSnapshot snapshot = example();
    const auto shown = [&] { return *AlarmsDisplay{snapshot, exampleNow}.watching(); };
    EXPECT_EQ(shown(), (AlarmsDisplay::Watching{.firing = 4,
                                                .watched = 3,
                                                .paused = 1,
                                                .updated = exampleUpdated,
                                                .stale = false,
                                                .alarms = snapshot.topAlarms}));
    for (const std::int64_t firing : {std::int64_t{0}, std::int64_t{-7}, longest, lowest}) {
        snapshot.firing = firing;
        EXPECT_EQ(shown().firing, firing);
        EXPECT_EQ(shown().alarms, snapshot.topAlarms);
    }
    const auto repeated = snapshot.targets.back();
    snapshot.targets.insert(snapshot.targets.end(), 7, repeated);
    EXPECT_EQ(shown().watched, 10);
    EXPECT_EQ(shown().paused, 8);
    snapshot.targets.clear();
    EXPECT_EQ(shown().watched, 0);
    EXPECT_EQ(shown().paused, 0);
}

TEST(AlarmsDisplay, IsStaleBeyondThreeIntervalsAndTwoMinutesAtLeast) {
    AlarmsSnapshot snapshot = example();
    for (const auto& [interval, limit] : std::vector<std::pair<std::int64_t, int>>{
             {0, 120}, {-5, 120}, {40, 120}, {41, 123}, {60, 180}, {300, 900}, {lowest, 120}}) {
        snapshot.intervalSeconds = interval;
        for (int age = -10; age <= limit + 10; ++age)
            ASSERT_EQ(staleAt(snapshot, exampleUpdated + age), age > limit)
                << interval << ", " << age;
        EXPECT_FALSE(staleAt(snapshot, exampleUpdated + (limit - 0.001))) << interval;
        EXPECT_TRUE(staleAt(snapshot, exampleUpdated + (limit + 0.001))) << interval;
        EXPECT_TRUE(staleAt(snapshot, exampleUpdated + 1e15)) << interval;
    }
    snapshot.intervalSeconds = longest;
    EXPECT_FALSE(staleAt(snapshot, exampleUpdated + 2.7e19));
    EXPECT_TRUE(staleAt(snapshot, exampleUpdated + 2.8e19));
}

TEST(AlarmsDisplay, TakesUpdatesOfAnyTimeToTheMillisecond) {
    AlarmsSnapshot snapshot = example();
    for (const auto& [milliseconds, seconds, stale] :
         std::vector<std::tuple<std::int64_t, double, bool>>{
             {1731772800123, 1731772800.123, false},
             {-1, -0.001, true},
             {longest, 9223372036854775.807, false},
             {lowest, -9223372036854775.808, true}}) {
        snapshot.updatedMs = milliseconds;
        const auto shown = *AlarmsDisplay{snapshot, exampleNow}.watching();
        EXPECT_EQ(shown.updated.seconds, seconds);
        EXPECT_EQ(shown.stale, stale) << milliseconds;
    }
}

TEST(AlarmsDisplay, PrintsItsCaseBesideTheMembers) {
    const auto printed = [](const AlarmsDisplay& display) { return foundation::toJSON(display); };
    EXPECT_EQ(printed({std::nullopt, exampleNow}), R"({"case":"unavailable"})");
    EXPECT_EQ(printed(AlarmsDisplay{AlarmsDisplay::NotWatching{}}), R"({"case":"notWatching"})");
    EXPECT_EQ(printed(AlarmsDisplay{AlarmsDisplay::Watching{
                  .firing = 5,
                  .watched = 3,
                  .paused = 2,
                  .updated = {1.5},
                  .stale = true,
                  .alarms = {{"n", "p", "r", {}, "w"}, {"m", "p", "r", 7, ""}}}}),
              R"({"case":"watching","firing":5,"watched":3,"paused":2,"updated":1.5,"stale":true,)"
              R"("alarms":[{"name":"n","profile":"p","region":"r","updatedMs":null,"reason":"w"},)"
              R"({"name":"m","profile":"p","region":"r","updatedMs":7,"reason":""}]})");
}

}  // namespace
}  // namespace tessary::alarms
