// A pinned metric as a kind of pin (pins/pin_kind.h).
#pragma once

#include <optional>
#include <string>

#include "pins/pin_display.h"
#include "pins/pin_kind.h"
#include "platform/views/view.h"

namespace tessary::metric {

using foundation::Date;
using snapshot::MetricPinsSnapshot;
using Pinned = pins::Pinned<MetricPinsSnapshot>;

struct MetricPin {
    using Snapshot = MetricPinsSnapshot;

    static constexpr const char* widget = "com.tessary.desktop.widgets.metric";

    static pins::PinWords words();
    /// "name · statistic · profile · region".
    static std::string detail(const Snapshot::Pin& pin);
    static Snapshot::Pin sample(Date now);
    /// The metric's screen in the host application; none where no metric is shown.
    static std::optional<std::string> link(const Snapshot::Pin* shown);
    static views::View layout(const Pinned& state, views::WidgetFamily family);
};

}  // namespace tessary::metric
