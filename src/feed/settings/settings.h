// What a person wants watched and pinned: the feed's settings, a file in TOML.
//
//     parseSettings("interval = 30", "feed.toml").value().interval      // 30
//     parseSettings("[[watch]]\nprofil = \"prod\"", "feed.toml").fault().message()
//         // feed.toml:2: unknown key 'profil' in [[watch]]; did you mean profile?
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/result.h"

namespace tessary::settings {

/// A profile of the AWS tools and its regions, whose alarms are counted and listed.
struct Watch {
    std::string profile{};
    std::vector<std::string> regions{};  ///< none: the profile's own
    /// Names of alarms that are left out, with * and ? for any characters and for one.
    std::vector<std::string> ignore{"TargetTracking-*"};
    bool operator==(const Watch&) const = default;
};

struct AlarmPin {
    std::string id{};
    std::string label{};
    std::string profile{};
    std::string region{};
    std::string name{};
    bool operator==(const AlarmPin&) const = default;
};

struct MetricPin {
    std::string id{};
    std::string label{};
    std::string profile{};
    std::string region{};
    std::string namespace_{};
    std::string name{};
    std::map<std::string, std::string> dimensions{};
    std::string statistic{"Average"};
    std::int64_t period{300};  ///< seconds
    bool operator==(const MetricPin&) const = default;
};

struct Settings {
    std::int64_t interval{60};  ///< seconds between two rounds, 10 to 86,400
    bool notify{true};
    std::vector<Watch> watch{};
    std::vector<AlarmPin> alarms{};
    std::vector<MetricPin> metrics{};
    bool operator==(const Settings&) const = default;
};

/// A fault names the file, the line, and the nearest known name or what was expected. An id or a
/// label that is not given is made of what the pin names.
foundation::Result<Settings> parseSettings(std::string_view text, const std::string& file);

}  // namespace tessary::settings
