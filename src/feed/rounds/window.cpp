#include "feed/rounds/window.h"

#include <algorithm>

namespace tessary::rounds {

namespace {

constexpr std::int64_t minute = 60;
constexpr std::int64_t hour = 60 * minute;
constexpr std::int64_t day = 24 * hour;
constexpr std::int64_t periodsShown = 36;
constexpr std::int64_t mostPoints = 1440;  // of an answer

/// How long samples of a period are kept.
std::int64_t kept(std::int64_t period) {
    if (period < minute) return 3 * hour;
    if (period < 5 * minute) return 15 * day;
    return period < hour ? 63 * day : 455 * day;
}

}  // namespace

Window windowAt(std::int64_t now, const Series& series) {
    const std::int64_t period = series.period;
    const bool isCount = series.statistic == "Sum" || series.statistic == "SampleCount";
    const std::int64_t begun = now - now % period;
    const std::int64_t end = isCount ? begun : begun + period;
    const std::int64_t wanted = std::max(periodsShown * period, hour);
    const std::int64_t length = std::min({wanted, mostPoints * period, kept(period)});
    return {end - std::max(length / period, std::int64_t{1}) * period, end};
}

std::int64_t pauseOf(const Series& series) { return std::min(series.period, 5 * minute); }

}  // namespace tessary::rounds
