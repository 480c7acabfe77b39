// Time zones written as rules, as POSIX has them in TZ.
//
//     parsePOSIXZone("CET-1CEST,M3.5.0,M10.5.0/3")->summer->ahead     // 7200
//     parsePOSIXZone("<+0530>-5:30")->ahead                           // 19800, and no summer
#pragma once

#include <optional>
#include <string_view>

namespace tessary::locale {

struct POSIXZone {
    /// When a season begins. On the weekday of a week, or, where that is 0, on a day of the month.
    struct Change {
        int month{};     ///< from 0
        int week{};      ///< 1 to 4, -1 for the last; or the day
        int weekday{};   ///< from 1, a Sunday
        int time{7200};  ///< seconds from midnight, by the clock until then
    };
    struct Summer {
        int ahead{};
        Change start{}, end{};
    };
    int ahead{};  ///< of UTC, in seconds
    std::optional<Summer> summer{};
};

/// None for what is no rule, and for the rare ones that change on a day counted from 0 or at an
/// hour before or after the day. Without dates, summer is that of the United States.
std::optional<POSIXZone> parsePOSIXZone(std::string_view rule);

}  // namespace tessary::locale
