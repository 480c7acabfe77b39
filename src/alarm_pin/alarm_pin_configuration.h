// What the user configures in the alarm pin widget: which alarm.
#pragma once

#include "pins/pin_provider.h"
#include "pins/pin_query.h"
#include "snapshot/pins_snapshot.h"

namespace tessary::alarm_pin {

using AlarmPinEntity = intents::AppEntity;
using AlarmPinConfiguration = pins::PinConfiguration;

/// The pinned alarms by label, with "profile · region" below.
struct AlarmPinQuery : pins::PinQuery<snapshot::AlarmPinsSnapshot> {
    AlarmPinQuery();
};

}  // namespace tessary::alarm_pin
