// What the metric widget has to show.
#pragma once

#include "pins/pin_display.h"
#include "snapshot/pins_snapshot.h"

namespace tessary::metric {

using foundation::Date;
using snapshot::MetricPinsSnapshot;
using MetricDisplay = pins::PinDisplay<MetricPinsSnapshot>;
using Pinned = pins::Pinned<MetricPinsSnapshot>;

}  // namespace tessary::metric
