#include "feed/rounds/window.h"

#include <gtest/gtest.h>

namespace tessary::rounds {
namespace {

TEST(Window, IsWholePeriodsThatAreKeptAndFitAnAnswer) {
    const std::int64_t now = 1731772840;
    for (std::int64_t period : {1, 5, 10, 20, 30, 60, 120, 300, 3540, 3600, 21600, 86400})
        for (std::int64_t later = 0; later < 2 * period;
             later += std::max<std::int64_t>(period / 7, 1))
            for (const std::string statistic : {"Average", "Sum", "SampleCount", "p99"}) {
                const auto [start, end] = windowAt(now + later, {period, statistic});
                const auto points = (end - start) / period;
                ASSERT_TRUE(start % period == 0 && end % period == 0) << period;
                ASSERT_TRUE(points >= 1 && points <= 1440) << period;
                ASSERT_GE(end - start, std::min<std::int64_t>(3600, 1440 * period)) << period;
                ASSERT_LE(end - start, std::max<std::int64_t>(36 * period, 3600)) << period;
                const bool isUnderWay = end > now + later;
                ASSERT_EQ(isUnderWay, statistic == "Average" || statistic == "p99") << period;
                ASSERT_LE(std::abs(end - now - later), period);
            }
    EXPECT_EQ(windowAt(now, {300, "Average"}), (Window{1731762300, 1731773100}));
    EXPECT_EQ(pauseOf({60, ""}), 60);
    EXPECT_EQ(pauseOf({3600, ""}), 300);
}

}  // namespace
}  // namespace tessary::rounds
