// The records of "widgets/alarms.json": what the host application watches and what is in ALARM.
//
// Every key is required but an alarm's `updatedMs`, and no value is judged: negative counts, an
// empty state, a count that disagrees with a list all pass as they stand.
//
//     decodeJSON<AlarmsSnapshot>(bytes).value().topAlarms.front().name      // "api-5xx-rate-high"
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/foundation/json_decoding.h"

namespace tessary::snapshot {

/// One watched profile and region.
struct Target {
    std::string profile{};
    std::string region{};
    std::int64_t firing{};  ///< alarms in ALARM there
    bool authExpired{};     ///< the profile's sign-in has expired, so it is not being watched
    bool failed{};
    bool operator==(const Target&) const = default;
};

/// One alarm in ALARM.
struct Alarm {
    std::string name{};
    std::string profile{};
    std::string region{};
    std::optional<std::int64_t> updatedMs{};  ///< milliseconds since 1970
    std::string reason{};
    bool operator==(const Alarm&) const = default;

    /// Tells rows of a list apart: profile, NUL, region, NUL, name.
    std::string identity() const { return profile + '\0' + region + '\0' + name; }
};

struct AlarmsSnapshot {
    static constexpr const char* fileName = "alarms";

    std::int64_t schemaVersion{};
    std::string state{};             ///< "watching", or anything else for not watching
    std::int64_t updatedMs{};        ///< milliseconds since 1970
    std::int64_t intervalSeconds{};  ///< between the host application's refreshes
    std::int64_t firing{};           ///< alarms in ALARM in total; may exceed the list's length
    std::vector<Target> targets{};
    std::vector<Alarm> topAlarms{};  ///< in the order in which they are to be shown
    bool operator==(const AlarmsSnapshot&) const = default;
};

}  // namespace tessary::snapshot

namespace tessary::foundation {

template <>
inline constexpr auto fieldsOf<snapshot::Target> = std::tuple{
    Field{"profile", &snapshot::Target::profile},
    Field{"region", &snapshot::Target::region},
    Field{"firing", &snapshot::Target::firing},
    Field{"authExpired", &snapshot::Target::authExpired},
    Field{"failed", &snapshot::Target::failed},
};

template <>
inline constexpr auto fieldsOf<snapshot::Alarm> = std::tuple{
    Field{"name", &snapshot::Alarm::name},     Field{"profile", &snapshot::Alarm::profile},
    Field{"region", &snapshot::Alarm::region}, Field{"updatedMs", &snapshot::Alarm::updatedMs},
    Field{"reason", &snapshot::Alarm::reason},
};

template <>
inline constexpr auto fieldsOf<snapshot::AlarmsSnapshot> = std::tuple{
    Field{"schemaVersion", &snapshot::AlarmsSnapshot::schemaVersion},
    Field{"state", &snapshot::AlarmsSnapshot::state},
    Field{"updatedMs", &snapshot::AlarmsSnapshot::updatedMs},
    Field{"intervalSeconds", &snapshot::AlarmsSnapshot::intervalSeconds},
    Field{"firing", &snapshot::AlarmsSnapshot::firing},
    Field{"targets", &snapshot::AlarmsSnapshot::targets},
    Field{"topAlarms", &snapshot::AlarmsSnapshot::topAlarms},
};

}  // namespace tessary::foundation
