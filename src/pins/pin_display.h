// What a widget of one pin has to show at one moment: the same four cases for alarms and metrics.
//
//     const auto display = PinDisplay<MetricPinsSnapshot>::resolve(snapshot, "orders-db CPU", now);
//     display.pinned()->pin.label        // "orders-db CPU"
#pragma once

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <variant>

#include "platform/foundation/date.h"
#include "platform/foundation/json_writing.h"
#include "platform/locale/text_equality.h"
#include "snapshot/freshness.h"
#include "snapshot/pins_snapshot.h"
#include "snapshot/reading.h"

namespace tessary::pins {

using foundation::Date;

inline constexpr double leastStaleLimit = 600;  ///< seconds

/// The chosen pin was found.
template <class Snapshot>
struct Pinned {
    typename Snapshot::Pin pin{};
    Date updated{};  ///< when the host application last refreshed the file
    bool stale{};    ///< that is too long ago
    bool operator==(const Pinned&) const = default;

    /// Whether its state, value and chart are not to be taken for current.
    bool muted() const { return pin.authExpired || pin.error.has_value() || stale; }
};
/// There is no usable file, or no pin in it.
struct NotPinned {
    bool operator==(const NotPinned&) const = default;
};
/// There are pins, but the widget names none.
struct Choose {
    bool operator==(const Choose&) const = default;
};
/// The pin that the widget names is not in the file.
struct Removed {
    bool operator==(const Removed&) const = default;
};

/// `Snapshot` has a schemaVersion, updatedMs, intervalSeconds and pins, each with an id.
template <class Snapshot>
class PinDisplay {
public:
    using Case = std::variant<Pinned<Snapshot>, NotPinned, Choose, Removed>;

    PinDisplay(Case value) : value_(std::move(value)) {}

    /// Reads no file and no clock. The first pin in file order whose identifier is canonically
    /// equivalent to `pinID` is shown; staleness, of three intervals and ten minutes at least, is
    /// judged at `reference`.
    static PinDisplay resolve(const std::optional<Snapshot>& snapshot,
                              const std::optional<std::string>& pinID, Date reference) {
        const bool usable = snapshot && snapshot::isSupported(*snapshot);
        if (!usable || snapshot->pins.empty()) return Case{NotPinned{}};
        if (!pinID) return Case{Choose{}};
        const auto pin = std::find_if(
            snapshot->pins.begin(), snapshot->pins.end(),
            [&](const auto& each) { return locale::canonicallyEqual(each.id, *pinID); });
        if (pin == snapshot->pins.end()) return Case{Removed{}};

        const Date updated = Date::fromMilliseconds(snapshot->updatedMs);
        const bool stale =
            snapshot::isStale(updated, snapshot->intervalSeconds, leastStaleLimit, reference);
        return Case{Pinned<Snapshot>{*pin, updated, stale}};
    }

    const Case& value() const { return value_; }
    /// The payload; none in the other cases.
    const Pinned<Snapshot>* pinned() const { return std::get_if<Pinned<Snapshot>>(&value_); }
    bool operator==(const PinDisplay&) const = default;

private:
    Case value_;
};

/// An object whose "case" names the case, with the payload's members beside it.
template <class Snapshot>
void writeJSON(foundation::JSONWriter& json, const PinDisplay<Snapshot>& display) {
    struct Writer {
        foundation::JSONWriter& json;
        void operator()(const Pinned<Snapshot>& state) const {
            json.member("case", "pinned").members(state);
        }
        void operator()(const NotPinned&) const { json.member("case", "notPinned"); }
        void operator()(const Choose&) const { json.member("case", "choose"); }
        void operator()(const Removed&) const { json.member("case", "removed"); }
    };
    json.object([&] { std::visit(Writer{json}, display.value()); });
}

}  // namespace tessary::pins

template <class Snapshot>
inline constexpr auto tessary::foundation::fieldsOf<tessary::pins::Pinned<Snapshot>> = std::tuple{
    Field{"pin", &tessary::pins::Pinned<Snapshot>::pin},
    Field{"updated", &tessary::pins::Pinned<Snapshot>::updated},
    Field{"stale", &tessary::pins::Pinned<Snapshot>::stale},
};
