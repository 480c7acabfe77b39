#include "alarm_pin/alarm_pin_configuration.h"

namespace tessary::alarm_pin {

AlarmPinQuery::AlarmPinQuery()
    : PinQuery{[](const snapshot::AlarmPinsSnapshot::Pin& pin) {
          return pin.profile + " · " + pin.region;
      }} {}

}  // namespace tessary::alarm_pin
