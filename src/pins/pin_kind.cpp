#include "pins/pin_kind.h"

#include <cmath>

namespace tessary::pins {

std::int64_t milliseconds(foundation::Date date) {
    constexpr double furthest = 0x1p62;  // leaves room to count on from
    return static_cast<std::int64_t>(
        std::fmax(-furthest, std::fmin(date.seconds * 1000, furthest)));
}

std::vector<snapshot::SnapshotPoint> sampleSeries(foundation::Date now, double amplitude,
                                                  double level) {
    constexpr int count = 36;
    constexpr std::int64_t spacing = 300'000;  // milliseconds
    const std::int64_t first = milliseconds(now) - (count - 1) * spacing;
    std::vector<snapshot::SnapshotPoint> points;
    points.reserve(count);
    for (int i = 0; i < count; ++i) {
        const double wave = std::sin(i / 4.0) + 0.5 * std::sin(i / 1.7);
        points.push_back({first + i * spacing, wave * amplitude + level});
    }
    return points;
}

}  // namespace tessary::pins
