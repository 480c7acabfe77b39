// What is known of the watched targets, and the alarms' file that follows from it.
//
//     KnownTarget target{.profile = "prod", .region = "us-east-1", .askedMs = now};
//     target = learned(target, Answered{alarms}, now);
//     alarmsFile({target}, 60)->firing                     // as many as were answered
//
// The rule of age: a file never says that nothing is in ALARM, just now, while nobody could ask.
// No widget shows that a target failed, so the file's age has to: it is as old as the oldest answer
// among the targets whose sign-in holds.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "platform/foundation/json_decoding.h"
#include "snapshot/alarms_snapshot.h"

namespace tessary::rounds {

/// Times are milliseconds since 1970.
struct KnownTarget {
    std::string profile{};
    std::string region{};
    std::int64_t askedMs{};                    ///< when it was first asked
    std::optional<std::int64_t> answeredMs{};  ///< when it last told its alarms
    std::optional<std::int64_t> expiredMs{};   ///< when its sign-in ended, where that is known
    bool authExpired{};                        ///< it is paused until somebody signs in
    std::int64_t failures{};                   ///< rounds in a row
    std::optional<std::string> fault{};        ///< of the last round, for a person
    std::int64_t firing{};                     ///< as last told
    std::vector<snapshot::Alarm> alarms{};     ///< those of them that are listed
    bool operator==(const KnownTarget&) const = default;
};

/// What a round brought of a target.
struct Answered {
    std::vector<snapshot::Alarm> alarms{};  ///< all in ALARM, in any order
};
struct SignInExpired {
    std::optional<std::int64_t> endedMs{};
    std::string words{};
};
struct Failed {
    std::string words{};
};
using Outcome = std::variant<Answered, SignInExpired, Failed>;

/// What is known after a round that ended at `nowMs`.
KnownTarget learned(KnownTarget target, const Outcome& outcome, std::int64_t nowMs);

/// The file; none while no target has ever answered and no sign-in is known to have ended. A target
/// that was never answered, and is not paused, makes the file stale from the start.
std::optional<snapshot::AlarmsSnapshot> alarmsFile(const std::vector<KnownTarget>& targets,
                                                   std::int64_t intervalSeconds);

/// The file that takes the place of one that stands where nothing is watched any more.
snapshot::AlarmsSnapshot nothingWatched(std::int64_t intervalSeconds, std::int64_t nowMs);

}  // namespace tessary::rounds

template <>
inline constexpr auto tessary::foundation::fieldsOf<tessary::rounds::KnownTarget> = std::tuple{
    Field{"profile", &tessary::rounds::KnownTarget::profile},
    Field{"region", &tessary::rounds::KnownTarget::region},
    Field{"askedMs", &tessary::rounds::KnownTarget::askedMs},
    Field{"answeredMs", &tessary::rounds::KnownTarget::answeredMs},
    Field{"expiredMs", &tessary::rounds::KnownTarget::expiredMs},
    Field{"authExpired", &tessary::rounds::KnownTarget::authExpired},
    Field{"failures", &tessary::rounds::KnownTarget::failures},
    Field{"fault", &tessary::rounds::KnownTarget::fault},
    Field{"firing", &tessary::rounds::KnownTarget::firing},
    Field{"alarms", &tessary::rounds::KnownTarget::alarms},
};
