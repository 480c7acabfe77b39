#include "alarm_pin/alarm_pin_provider.h"

#include "platform/system/surroundings.h"

namespace tessary::alarm_pin {

namespace {

AlarmPinsSnapshot::Pin samplePin(Date now) {
    constexpr double stateAge = 720;  // seconds
    AlarmPinsSnapshot::Pin pin;
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

}  // namespace

AlarmPinProvider::AlarmPinProvider() : PinProvider{AlarmPinPreviewData::alarm} {}

Date AlarmPinPreviewData::now() {
    static const Date date = system::surroundings().clock();
    return date;
}

const AlarmPinDisplay& AlarmPinPreviewData::alarm() {
    static const AlarmPinDisplay display{Pinned{samplePin(now()), now() - 40, false}};
    return display;
}

}  // namespace tessary::alarm_pin
