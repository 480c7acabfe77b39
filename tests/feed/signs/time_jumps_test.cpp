#include "feed/signs/time_jumps.h"

#include <gtest/gtest.h>

namespace tessary::signs {
namespace {

TEST(TimeJumps, AreOfMoreThanAFewSecondsEitherWay) {
    double ahead = 100;
    TimeJumps jumps{[&] { return ahead; }};
    for (const auto& [now, hasJumped] : {std::pair{100.0, false},
                                         {104.0, false},
                                         {108.0, false},
                                         {3700.0, true},
                                         {3700.0, false},
                                         {90.0, true}}) {
        ahead = now;
        EXPECT_EQ(jumps.haveCome(), hasJumped) << now;
    }
}

}  // namespace
}  // namespace tessary::signs
