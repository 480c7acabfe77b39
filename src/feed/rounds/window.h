// Which samples of a metric are asked for, and how often.
//
//     windowAt(1731772840, {.period = 300, .statistic = "Average"})
//         // {1731762300, 1731773100}: 36 periods, the last of them still under way
#pragma once

#include <cstdint>
#include <string>

namespace tessary::rounds {

struct Series {
    std::int64_t period{};    ///< seconds
    std::string statistic{};  ///< "Average", "p99", "Sum"
};

/// Seconds since 1970, both multiples of the period; the end is not in it.
struct Window {
    std::int64_t start{};
    std::int64_t end{};
    bool operator==(const Window&) const = default;
};

/// 36 periods, an hour at least; no more points than an answer holds and no older ones than
/// CloudWatch keeps. The period under way is in it, but of a Sum or a SampleCount, which would look
/// as if they had fallen.
Window windowAt(std::int64_t now, const Series& series);

/// Seconds from one question to the next: a period, five minutes at most.
std::int64_t pauseOf(const Series& series);

}  // namespace tessary::rounds
