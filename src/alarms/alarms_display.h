// What the alarms widget has to show at one moment.
//
//     const AlarmsDisplay display{load<AlarmsSnapshot>(source), now};
//     display.watching()->stale          // true when the file is too old at `now`
#pragma once

#include <cstdint>
#include <optional>
#include <variant>
#include <vector>

#include "platform/foundation/date.h"
#include "platform/foundation/json_writing.h"
#include "snapshot/alarms_snapshot.h"

namespace tessary::alarms {

using foundation::Date;
using snapshot::Alarm;
using snapshot::AlarmsSnapshot;

inline constexpr double leastStaleLimit = 120;  ///< seconds

class AlarmsDisplay {
public:
    /// The host application is watching, and this is what it sees.
    struct Watching {
        std::int64_t firing{};   ///< watched alarms in ALARM, as the file says
        std::int64_t watched{};  ///< profile and region pairs
        std::int64_t paused{};   ///< those of them whose sign-in has expired
        Date updated{};          ///< when the file was last brought up to date
        bool stale{};            ///< that is too long ago
        std::vector<Alarm> alarms{};
        bool operator==(const Watching&) const = default;
    };
    /// There is no usable file.
    struct Unavailable {
        bool operator==(const Unavailable&) const = default;
    };
    /// Alarm notifications are off in the host application.
    struct NotWatching {
        bool operator==(const NotWatching&) const = default;
    };
    using Case = std::variant<Watching, Unavailable, NotWatching>;

    AlarmsDisplay(Case value) : value_(std::move(value)) {}
    /// Reads no file and no clock. A snapshot is stale once it is older at `now` than three of its
    /// intervals, and two minutes at least; an age of exactly that is not.
    AlarmsDisplay(const std::optional<AlarmsSnapshot>& snapshot, Date now);

    const Case& value() const { return value_; }
    /// The payload; none in the other cases.
    const Watching* watching() const { return std::get_if<Watching>(&value_); }
    bool operator==(const AlarmsDisplay&) const = default;

private:
    Case value_;
};

/// An object whose "case" names the case, with the payload's members beside it.
void writeJSON(foundation::JSONWriter& json, const AlarmsDisplay& display);

}  // namespace tessary::alarms

namespace tessary::foundation {

template <>
inline constexpr auto fieldsOf<alarms::AlarmsDisplay::Watching> = std::tuple{
    Field{"firing", &alarms::AlarmsDisplay::Watching::firing},
    Field{"watched", &alarms::AlarmsDisplay::Watching::watched},
    Field{"paused", &alarms::AlarmsDisplay::Watching::paused},
    Field{"updated", &alarms::AlarmsDisplay::Watching::updated},
    Field{"stale", &alarms::AlarmsDisplay::Watching::stale},
    Field{"alarms", &alarms::AlarmsDisplay::Watching::alarms},
};

}  // namespace tessary::foundation
