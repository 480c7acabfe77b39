// When data is too old to be shown as current.
#pragma once

#include <algorithm>
#include <cstdint>

#include "platform/foundation/date.h"

namespace tessary::snapshot {

/// How old data may become, in seconds, before it is stale: three of the host application's refresh
/// intervals, and `leastLimit` in any case.
inline double staleLimit(std::int64_t intervalSeconds, double leastLimit) {
    return std::max(3 * static_cast<double>(intervalSeconds), leastLimit);
}

/// Whether data brought up to date at `updated` is stale at `reference`: older than its limit. An
/// age of exactly the limit, or a date to come, is not stale.
///
///     isStale(Date{0}, 60, 120, Date{180})        // false
///     isStale(Date{0}, 60, 120, Date{180.001})    // true
inline bool isStale(foundation::Date updated, std::int64_t intervalSeconds, double leastLimit,
                    foundation::Date reference) {
    return reference - updated > staleLimit(intervalSeconds, leastLimit);
}

}  // namespace tessary::snapshot
