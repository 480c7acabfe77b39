// Which entry of a timeline is shown when, and when the desktop has to do something about it.
//
//     const std::vector<double> dates{100, 160};
//     shownEntry(dates, 130)              // 0
//     nextWake(dates, askDate(400, 130), 130)   // 160, and at 160 it is 400
//
// Times are seconds since 1970.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

namespace tessary::places {

/// However early a policy's date is, this many seconds lie between two questions.
inline constexpr double leastBetweenAsking = 5;

/// The entry to show: the latest whose date has come (the last of equals), before all of them the
/// earliest; none of no entries. The dates need not be in order.
std::optional<std::size_t> shownEntry(const std::vector<double>& dates, double now);

/// When to ask for a new timeline, for one received at a time with a policy's date.
double askDate(double policy, double received);

/// When to look again: at the first date after now, or to ask, whichever comes first.
double nextWake(const std::vector<double>& dates, double ask, double now);

}  // namespace tessary::places
