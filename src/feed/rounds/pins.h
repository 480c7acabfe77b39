// What is known of the pins, and the files of pins that follow from it.
//
//     KnownPin<snapshot::MetricPin> pin{.shown = {.id = "cpu"}};
//     pin = learned(pin, Refreshed{fetched}, now);
//     pinsFile({pin}, 60, now).pins.front().points
//
// A pin tells its own trouble, so these files are always of now. One that cannot be refreshed keeps
// what it last had; it says so from the second failure in a row on, or from the first where this
// process has not seen it answered, and at once where trying again would be of no use.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "feed/rounds/targets.h"
#include "snapshot/pins_snapshot.h"

namespace tessary::rounds {

/// A pin of snapshot's kinds. Its table is for what is remembered from one start to the next.
template <class Pin>
struct KnownPin {
    Pin shown{};                               ///< as its file has it
    std::optional<std::int64_t> answeredMs{};  ///< when it was last answered, since 1970
    std::int64_t failures{};                   ///< in a row
    bool isSeen{};                             ///< answered since this process began
    std::string subject{};                     ///< what it is of; another's points are not its own
    std::optional<std::int64_t> seriesMs{};    ///< when it was last told about its points
    std::int64_t seriesFailures{};             ///< in a row, while the alarm itself was answered
    std::optional<std::string> seriesFault{};  ///< what is said of them
    bool operator==(const KnownPin&) const = default;
};

/// What a round brought of a pin.
template <class Pin>
struct Refreshed {
    Pin pin{};
};
struct Unanswered {
    std::string words{};
    bool isLasting{};  ///< the next time it will be the same
};
template <class Pin>
using PinOutcome = std::variant<Refreshed<Pin>, SignInExpired, Unanswered>;

template <class Pin>
KnownPin<Pin> learned(KnownPin<Pin> known, const PinOutcome<Pin>& outcome, std::int64_t nowMs) {
    if (const auto* fresh = std::get_if<Refreshed<Pin>>(&outcome)) {
        known.shown = fresh->pin;
        known.answeredMs = nowMs;
        known.failures = 0;
        known.isSeen = true;
        return known;
    }
    known.shown.authExpired = std::holds_alternative<SignInExpired>(outcome);
    if (known.shown.authExpired) return known;
    const auto& [words, isLasting] = std::get<Unanswered>(outcome);
    ++known.failures;
    if (isLasting || known.failures > 1 || !known.isSeen) known.shown.error = words;
    return known;
}

template <class Pin>
snapshot::PinsSnapshot<Pin> pinsFile(const std::vector<KnownPin<Pin>>& pins,
                                     std::int64_t intervalSeconds, std::int64_t nowMs) {
    snapshot::PinsSnapshot<Pin> file{
        .schemaVersion = 1, .updatedMs = nowMs, .intervalSeconds = intervalSeconds};
    for (const auto& pin : pins) file.pins.push_back(pin.shown);
    return file;
}

}  // namespace tessary::rounds

template <class Pin>
inline constexpr auto tessary::foundation::fieldsOf<tessary::rounds::KnownPin<Pin>> = std::tuple{
    Field{"shown", &tessary::rounds::KnownPin<Pin>::shown},
    Field{"answeredMs", &tessary::rounds::KnownPin<Pin>::answeredMs},
    Field{"failures", &tessary::rounds::KnownPin<Pin>::failures},
    Field{"subject", &tessary::rounds::KnownPin<Pin>::subject},
    Field{"seriesMs", &tessary::rounds::KnownPin<Pin>::seriesMs},
    Field{"seriesFailures", &tessary::rounds::KnownPin<Pin>::seriesFailures},
    Field{"seriesFault", &tessary::rounds::KnownPin<Pin>::seriesFault},
};
