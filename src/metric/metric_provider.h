// Answers a host's requests for the metric widget.
#pragma once

#include "metric/metric_configuration.h"
#include "metric/metric_display.h"
#include "pins/pin_provider.h"

namespace tessary::metric {

using MetricEntry = pins::PinEntry<MetricPinsSnapshot>;

struct MetricProvider : pins::PinProvider<MetricPinsSnapshot> {
    MetricProvider();
};

/// The sample, built on first use and then the same for the life of the process.
struct MetricPreviewData {
    static Date now();
    static const MetricDisplay& cpu();
};

}  // namespace tessary::metric
