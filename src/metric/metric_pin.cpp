#include "metric/metric_pin.h"

#include "platform/foundation/percent_encoding.h"
#include "platform/locale/localized.h"

namespace tessary::metric {

using locale::localized;

pins::PinWords MetricPin::words() {
    return {
        .heading = localized("CloudWatch metric"),
        .description =
            localized("A metric you pinned in Tessary: its latest value and recent hours."),
        .title = localized("Metric"),
        .entityType = localized("Pinned metric"),
        .howToPin = localized("In Tessary, use Add to widget on a CloudWatch chart."),
        .chooseTitle = localized("Choose a metric"),
        .howToChoose = localized("Edit the widget to pick one of your pinned metrics."),
        .removed =
            localized("This metric was removed in Tessary. Edit the widget to choose another."),
    };
}

std::string MetricPin::detail(const Snapshot::Pin& pin) {
    return pin.metricName + " · " + pin.stat + " · " + pin.profile + " · " + pin.region;
}

MetricPinsSnapshot::Pin MetricPin::sample(Date now) {
    Snapshot::Pin pin;
    pin.id = pin.label = "orders-db CPU";
    pin.profile = "prod";
    pin.region = "us-east-1";
    pin.namespace_ = "AWS/RDS";
    pin.metricName = "CPUUtilization";
    pin.stat = "Average";
    pin.periodSeconds = 300;
    pin.unit = "Percent";
    pin.points = pins::sampleSeries(now, 14, 42);
    pin.latest = pin.points.back();
    return pin;
}

std::optional<std::string> MetricPin::link(const Snapshot::Pin* shown) {
    if (shown == nullptr) return std::nullopt;
    return "tessary://cloudwatch/metric?pin=" + foundation::percentEncoded(shown->id);
}

}  // namespace tessary::metric
