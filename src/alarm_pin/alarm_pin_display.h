// What the alarm pin widget has to show, and how it names and colours an alarm's state.
#pragma once

#include <optional>
#include <string>

#include "pins/pin_display.h"
#include "platform/views/color.h"
#include "snapshot/pins_snapshot.h"

namespace tessary::alarm_pin {

using foundation::Date;
using snapshot::AlarmPinsSnapshot;
using Pinned = pins::Pinned<AlarmPinsSnapshot>;

/// "In alarm", "OK", "Insufficient data"; "Unknown" for any other state and for none. Case matters.
std::string stateText(const std::optional<std::string>& state);

/// Danger in ALARM, success in OK, tertiary for any other state and for none.
views::Color stateColor(const std::optional<std::string>& state);

}  // namespace tessary::alarm_pin
