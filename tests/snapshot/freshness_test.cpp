#include "snapshot/freshness.h"

#include <gtest/gtest.h>
#include <limits>

namespace tessary::snapshot {
namespace {

TEST(Freshness, EndsAfterThreeIntervalsAndTheLeastLimitAtLeast) {
    constexpr auto longest = std::numeric_limits<std::int64_t>::max();
    const struct {
        std::int64_t interval;
        double least, limit;
    } cases[] = {{-longest - 1, 120, 120}, {0, 120, 120},           {40, 120, 120},
                 {41, 120, 123},           {300, 120, 900},         {200, 600, 600},
                 {201, 600, 603},          {longest, 120, 2.767e19}};
    for (const auto& [interval, least, limit] : cases)
        for (const double updated : {1731772800.123, -0.001})
            for (const double age : {-10.0, limit - 0.001, limit, limit + 0.001, 2.8e19}) {
                const foundation::Date from{updated}, now = from + age;
                EXPECT_EQ(isStale(from, interval, least, now), now - from > limit)
                    << interval << ' ' << age;
            }
}

}  // namespace
}  // namespace tessary::snapshot
