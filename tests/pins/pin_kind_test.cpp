#include "pins/pin_kind.h"

#include <cmath>
#include <map>

#include "alarm_pin/alarm_pin.h"
#include "metric/metric_pin.h"
#include "platform/foundation/json_writing.h"
#include "support/golden.h"

namespace tessary::pins {
namespace {

TEST(PinKind, HasASampleOfThreeHours) {
    constexpr auto lines = foundation::JSONWriter::Style::indented;
    const foundation::Date now{1731772840};
    expectGolden("alarm_sample.txt", toJSON(alarm_pin::AlarmPin::sample(now), lines));
    expectGolden("metric_sample.txt", toJSON(metric::MetricPin::sample(now), lines));
}

TEST(PinKind, CountsMillisecondsToTheNearestThatThereAre) {
    const std::map<double, double> cases{
        {0, 0},          {1.9999, 1999},    {-1.9999, -1999},  {1e15, 1e18},
        {1e300, 0x1p62}, {-1e300, -0x1p62}, {HUGE_VAL, 0x1p62}};
    for (const auto& [seconds, expected] : cases)
        EXPECT_EQ(static_cast<double>(milliseconds({seconds})), expected) << seconds;
}

}  // namespace
}  // namespace tessary::pins
