// A pinned alarm as a kind of pin (pins/pin_kind.h).
#pragma once

#include <optional>
#include <string>

#include "alarm_pin/alarm_pin_display.h"
#include "pins/pin_kind.h"
#include "platform/views/view.h"

namespace tessary::alarm_pin {

struct AlarmPin {
    using Snapshot = AlarmPinsSnapshot;

    static constexpr const char* widget = "com.tessary.desktop.widgets.alarm";

    static pins::PinWords words();
    /// "profile · region".
    static std::string detail(const Snapshot::Pin& pin);
    static Snapshot::Pin sample(Date now);
    /// The alarm's screen in the host application; the list of alarms where no alarm is shown.
    static std::optional<std::string> link(const Snapshot::Pin* shown);
    static views::View layout(const Pinned& state, views::WidgetFamily family);
};

}  // namespace tessary::alarm_pin
