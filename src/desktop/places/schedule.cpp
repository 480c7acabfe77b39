#include "desktop/places/schedule.h"

#include <algorithm>

namespace tessary::places {

std::optional<std::size_t> shownEntry(const std::vector<double>& dates, double now) {
    std::optional<std::size_t> come, earliest;
    for (std::size_t i = 0; i < dates.size(); ++i) {
        if (dates[i] <= now && (!come || dates[i] >= dates[*come])) come = i;
        if (!earliest || dates[i] < dates[*earliest]) earliest = i;
    }
    return come ? come : earliest;
}

double askDate(double policy, double received) {
    return std::max(policy, received + leastBetweenAsking);
}

double nextWake(const std::vector<double>& dates, double ask, double now) {
    double wake = ask;
    for (const double date : dates)
        if (date > now) wake = std::min(wake, date);
    return wake;
}

}  // namespace tessary::places
