// Answers a host's requests for the alarm pin widget.
#pragma once

#include "alarm_pin/alarm_pin_configuration.h"
#include "alarm_pin/alarm_pin_display.h"
#include "pins/pin_provider.h"

namespace tessary::alarm_pin {

using AlarmPinEntry = pins::PinEntry<AlarmPinsSnapshot>;

struct AlarmPinProvider : pins::PinProvider<AlarmPinsSnapshot> {
    AlarmPinProvider();
};

/// The sample, built on first use and then the same for the life of the process.
struct AlarmPinPreviewData {
    static Date now();
    static const AlarmPinDisplay& alarm();
};

}  // namespace tessary::alarm_pin
