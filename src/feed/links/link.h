// The links that the widgets name, read.
//
//     parseLink("tessary://alarms")                                     // AlarmsLink{}
//     parseLink("tessary://alarms/cpu%20high?profile=prod&region=us-east-1")
//         // AlarmLink{"cpu high", "prod", "us-east-1"}
//     parseLink("tessary://cloudwatch/metric?pin=orders")               // MetricLink{"orders"}
//
// Whatever is clicked anywhere may come in here, so nothing is guessed: anything that is not one of
// the three to the letter is refused.
#pragma once

#include <string>
#include <string_view>
#include <variant>

#include "platform/foundation/result.h"

namespace tessary::links {

struct AlarmsLink {
    bool operator==(const AlarmsLink&) const = default;
};
struct AlarmLink {
    std::string name{};
    std::string profile{};
    std::string region{};
    bool operator==(const AlarmLink&) const = default;
};
struct MetricLink {
    std::string pin{};
    bool operator==(const MetricLink&) const = default;
};
using Link = std::variant<AlarmsLink, AlarmLink, MetricLink>;

/// The scheme counts in any case of the letters, the members behind "?" in any order. A fault, on
/// one line, names what is wrong: another scheme or place; a user, a port or a fragment; a member
/// that is unknown, missing or given twice; a word that is empty or wrongly encoded; a region that
/// is none; more than 16 KiB.
foundation::Result<Link> parseLink(std::string_view text);

}  // namespace tessary::links
