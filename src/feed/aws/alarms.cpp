#include "feed/aws/alarms.h"

#include <cmath>

namespace tessary::aws {

std::optional<std::int64_t> DescribedAlarm::since() const {
    const auto seconds = stateTransitioned ? stateTransitioned : stateUpdated;
    constexpr double furthest = 9e12;  // seconds; far beyond any calendar, and within 64 bits
    if (!seconds || !(std::abs(*seconds) < furthest)) return std::nullopt;
    return std::llround(*seconds * 1000);
}

}  // namespace tessary::aws
