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

#include "platform/foundation/json_decoding.h"
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

/// A statistic may be told for so many seconds: 1, 5, 10, 20, 30 or whole minutes, a day at most.
bool isPeriod(std::int64_t seconds);

/// With an id and a label made of what the pin names, where it has none.
AlarmPin completed(AlarmPin pin);
MetricPin completed(MetricPin pin);

/// A fault names the file, the line, and the nearest known name or what was expected. An id or a
/// label that is not given is made of what the pin names.
foundation::Result<Settings> parseSettings(std::string_view text, const std::string& file);

}  // namespace tessary::settings

namespace tessary::foundation {

template <>
inline constexpr auto fieldsOf<settings::Watch> = std::tuple{
    Field{"profile", &settings::Watch::profile},
    Field{"regions", &settings::Watch::regions},
    Field{"ignore", &settings::Watch::ignore},
};

template <>
inline constexpr auto fieldsOf<settings::AlarmPin> = std::tuple{
    Field{"id", &settings::AlarmPin::id},           Field{"label", &settings::AlarmPin::label},
    Field{"profile", &settings::AlarmPin::profile}, Field{"region", &settings::AlarmPin::region},
    Field{"name", &settings::AlarmPin::name},
};

template <>
inline constexpr auto fieldsOf<settings::MetricPin> = std::tuple{
    Field{"id", &settings::MetricPin::id},
    Field{"label", &settings::MetricPin::label},
    Field{"profile", &settings::MetricPin::profile},
    Field{"region", &settings::MetricPin::region},
    Field{"namespace", &settings::MetricPin::namespace_},
    Field{"name", &settings::MetricPin::name},
    Field{"dimensions", &settings::MetricPin::dimensions},
    Field{"statistic", &settings::MetricPin::statistic},
    Field{"period", &settings::MetricPin::period},
};

}  // namespace tessary::foundation
