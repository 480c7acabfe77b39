#include "metric/metric_provider.h"

#include "platform/system/surroundings.h"

namespace tessary::metric {

namespace {

MetricPinsSnapshot::Pin samplePin(Date now) {
    MetricPinsSnapshot::Pin pin;
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

}  // namespace

MetricProvider::MetricProvider() : PinProvider{MetricPreviewData::cpu} {}

Date MetricPreviewData::now() {
    static const Date date = system::surroundings().clock();
    return date;
}

const MetricDisplay& MetricPreviewData::cpu() {
    static const MetricDisplay display{Pinned{samplePin(now()), now() - 40, false}};
    return display;
}

}  // namespace tessary::metric
