// What the alarm pin widget looks like, in both sizes and every state.
//
// Pure functions of an entry and a family: no file is read here, and no clock.
#pragma once

#include <optional>
#include <string>

#include "alarm_pin/alarm_pin_provider.h"
#include "platform/views/view.h"

namespace tessary::alarm_pin {

using views::View;

/// The widget: its content, guarded while locked, on the background, with its link.
struct AlarmPinWidgetEntryView {
    AlarmPinEntry entry;

    View body() const;
    /// The alarm's screen in the host application; the list of alarms where no alarm is shown.
    std::optional<std::string> link() const;
};

/// The content for a display state and a size.
struct AlarmPinWidgetView {
    AlarmPinDisplay display;
    Date now{};
    bool medium{};

    View body() const;
};

/// The alarm's label, in two lines at most.
struct AlarmName {
    AlarmPinsSnapshot::Pin pin{};

    View body() const;
};

/// A dot and the state in words.
struct StateBadge {
    Pinned state{};

    View body() const;
};

/// The metric's recent samples against the threshold; empty room where there is no metric.
struct AlarmChart {
    Pinned state{};

    View body() const;
};

/// The latest value, or what is the matter.
struct AlarmFooter {
    Pinned state{};
    Date now{};

    View body() const;
    /// Value, threshold and time of the latest sample; without one, since when the state holds;
    /// without that, where the alarm is.
    std::string detail() const;
};

}  // namespace tessary::alarm_pin
