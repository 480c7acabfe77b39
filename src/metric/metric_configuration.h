// What the user configures in the metric widget: which metric.
#pragma once

#include "pins/pin_provider.h"
#include "pins/pin_query.h"
#include "snapshot/pins_snapshot.h"

namespace tessary::metric {

using MetricPinEntity = intents::AppEntity;
using MetricPinConfiguration = pins::PinConfiguration;

/// The pinned metrics by label, with "name · statistic · profile · region" below.
struct MetricPinQuery : pins::PinQuery<snapshot::MetricPinsSnapshot> {
    MetricPinQuery();
};

}  // namespace tessary::metric
