// What the metric widget looks like, in both sizes and every state.
//
// Pure functions of an entry and a family: no file is read here, and no clock.
#pragma once

#include <optional>
#include <string>

#include "metric/metric_provider.h"
#include "platform/views/view.h"

namespace tessary::metric {

using views::View;

/// The widget: its content, guarded while locked, on the background, with its link.
struct MetricWidgetEntryView {
    MetricEntry entry;

    View body() const;
    /// The metric's screen in the host application; none where no metric is shown.
    std::optional<std::string> link() const;
};

/// The content for a display state and a size.
struct MetricWidgetView {
    MetricDisplay display;
    Date now{};
    bool medium{};

    View body() const;
};

/// The left column of the medium size.
struct MetricSummary {
    Pinned state{};
    Date now{};

    View body() const;
};

/// The metric's label, in one line.
struct MetricHeader {
    MetricPinsSnapshot::Pin pin{};

    View body() const;
};

/// The latest value, large.
struct MetricValue {
    Pinned state{};

    View body() const;
};

/// The statistic and the time of the latest sample, or what is the matter.
struct MetricFooter {
    Pinned state{};
    Date now{};

    View body() const;
};

/// The smallest and largest value of the points, and their mean.
struct MetricStats {
    MetricPinsSnapshot::Pin pin{};

    View body() const;

private:
    View stat(const std::string& label, std::optional<double> value) const;
};

}  // namespace tessary::metric
