#include "alarm_pin/alarm_pin.h"

#include "platform/foundation/percent_encoding.h"
#include "platform/locale/localized.h"

namespace tessary::alarm_pin {

using foundation::percentEncoded;
using locale::localized;

pins::PinWords AlarmPin::words() {
    return {
        .heading = localized("CloudWatch alarm"),
        .description = localized(
            "One alarm you pinned in Tessary: its state and its metric against the threshold."),
        .title = localized("Alarm"),
        .entityType = localized("Pinned alarm"),
        .howToPin = localized("In Tessary, open an alarm and use Add to widget."),
        .chooseTitle = localized("Choose an alarm"),
        .howToChoose = localized("Edit the widget to pick one of your pinned alarms."),
        .removed =
            localized("This alarm was removed in Tessary. Edit the widget to choose another."),
    };
}

std::string AlarmPin::detail(const Snapshot::Pin& pin) { return pin.profile + " · " + pin.region; }

AlarmPinsSnapshot::Pin AlarmPin::sample(Date now) {
    constexpr double stateAge = 720;  // seconds
    Snapshot::Pin pin;
    pin.id = pin.label = pin.alarmName = "orders-db-cpu-high";
    pin.profile = "prod";
    pin.region = "us-east-1";
    pin.state = "ALARM";
    pin.reason =
        "Threshold Crossed: 3 out of the last 3 datapoints were greater than the threshold (80.0).";
    pin.stateUpdatedMs = pins::milliseconds(now - stateAge);
    pin.threshold = 80;
    pin.comparison = "GreaterThanThreshold";
    pin.unit = "Percent";
    pin.metricName = "CPUUtilization";
    pin.periodSeconds = 300;
    pin.points = pins::sampleSeries(now, 10, 82);
    pin.latest = pin.points.back();
    return pin;
}

std::optional<std::string> AlarmPin::link(const Snapshot::Pin* shown) {
    if (shown == nullptr) return "tessary://alarms";
    return "tessary://alarms/" + percentEncoded(shown->alarmName) +
           "?profile=" + percentEncoded(shown->profile) +
           "&region=" + percentEncoded(shown->region);
}

}  // namespace tessary::alarm_pin
