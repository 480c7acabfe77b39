#include <cmath>
#include <map>
#include <sstream>

#include "alarm_pin/alarm_pin.h"
#include "metric/metric_pin.h"
#include "platform/foundation/json_writing.h"
#include "support/golden.h"

namespace tessary::pins {
namespace {

/// Two sine waves; times are stored as they are before the last.
template <class Pin>
std::string described(Pin pin) {
    const auto last = pin.latest->t;
    EXPECT_EQ(last, 1731772840000);
    EXPECT_EQ(pin.latest, pin.points.back());
    if constexpr (requires { pin.stateUpdatedMs; }) pin.stateUpdatedMs.value() -= last;
    std::ostringstream dump;
    for (const auto& [t, v] : pin.points) dump << (t - last) / 1000 << ' ' << v << '\n';
    pin.points.clear();
    pin.latest.reset();
    return foundation::toJSON(pin) + '\n' + dump.str();
}

TEST(PinSample, HasThreeHours) {
    expectGolden("alarm_sample.txt", described(alarm_pin::AlarmPin::sample({1731772840})));
    expectGolden("metric_sample.txt", described(metric::MetricPin::sample({1731772840})));
}

TEST(PinSample, CountsMillisecondsToTheNearestThatThereAre) {
    const std::map<double, double> cases{
        {0, 0},          {1.9999, 1999},    {-1.9999, -1999},  {1e15, 1e18},
        {1e300, 0x1p62}, {-1e300, -0x1p62}, {HUGE_VAL, 0x1p62}};
    for (const auto& [seconds, expected] : cases) {
        EXPECT_EQ(static_cast<double>(milliseconds({seconds})), expected) << seconds;
        const auto series = sampleSeries({seconds}, 1, 1);
        EXPECT_EQ(series.back().t - series.front().t, 35 * 300000);
    }
}

}  // namespace
}  // namespace tessary::pins
