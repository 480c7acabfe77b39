#include "desktop/places/schedule.h"

#include <gtest/gtest.h>
#include <limits>

namespace tessary::places {
namespace {

const std::vector<double> dates{100, 160, 160, 220};

TEST(Schedule, ShowsTheLatestWhoseDateHasCome) {
    const struct {
        double now;
        std::size_t shown;
        double wake;  // where the policy's date is 400
    } table[] = {
        {0, 0, 100},   {99.9, 0, 100}, {100, 0, 160}, {159, 0, 160},
        {160, 2, 220}, {219, 2, 220},  {220, 3, 400}, {1e9, 3, 400},
    };
    for (const auto& [now, shown, wake] : table) {
        EXPECT_EQ(shownEntry(dates, now), shown) << now;
        EXPECT_EQ(nextWake(dates, 400, now), wake) << now;
        EXPECT_EQ(nextWake(dates, 90, now), 90) << now;
    }
    EXPECT_EQ(shownEntry({}, 5), std::nullopt);
    EXPECT_EQ(shownEntry({220, 100}, 5), 1u);
    EXPECT_EQ(nextWake({}, std::numeric_limits<double>::infinity(), 5),
              std::numeric_limits<double>::infinity());
}

// Waking when told to, and never else, shows what looking all the time would.
TEST(Schedule, NoEntryIsMissedBetweenWakes) {
    double now = 50;
    for (double wake = nextWake(dates, 300, now); wake < 300; wake = nextWake(dates, 300, now)) {
        ASSERT_GT(wake, now);
        for (double at = now; at < wake; at += 0.5)
            EXPECT_EQ(shownEntry(dates, at), shownEntry(dates, now)) << at;
        now = wake;
    }
    EXPECT_EQ(now, 220);
}

TEST(Schedule, AsksAtThePolicysDateButNotAtOnce) {
    EXPECT_EQ(askDate(400, 130), 400);
    for (const double early : {0.0, 130.0, 130 + leastBetweenAsking})
        EXPECT_EQ(askDate(early, 130), 130 + leastBetweenAsking) << early;
}

}  // namespace
}  // namespace tessary::places
