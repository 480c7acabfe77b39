#include "metric/metric_configuration.h"

namespace tessary::metric {

MetricPinQuery::MetricPinQuery()
    : PinQuery{[](const snapshot::MetricPinsSnapshot::Pin& pin) {
          return pin.metricName + " · " + pin.stat + " · " + pin.profile + " · " + pin.region;
      }} {}

}  // namespace tessary::metric
