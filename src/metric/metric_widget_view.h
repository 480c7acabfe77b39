// What a metric's pin looks like: the parts of both sizes.
//
// Pure functions of what they show and what is inherited: no file is read here, and no clock.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/views/view.h"
#include "snapshot/pins_snapshot.h"

namespace tessary::metric {

using views::View;

/// The latest value, large.
struct MetricValue {
    std::optional<snapshot::SnapshotPoint> latest{};
    std::optional<std::string> unit{};
    bool muted{};

    View body(const views::Environment& environment) const;
    bool operator==(const MetricValue&) const = default;
};

/// The statistic and the time of the latest sample.
struct SampleTime {
    std::string stat{};
    std::optional<snapshot::SnapshotPoint> latest{};

    View body(const views::Environment& environment) const;
    bool operator==(const SampleTime&) const = default;

private:
    View text(const locale::UserLocale& locale) const;
};

/// The smallest and largest value of a series, and their mean; none of an empty one.
struct MetricStats {
    std::optional<double> least{};
    std::optional<double> most{};
    std::optional<double> mean{};
    std::optional<std::string> unit{};

    static MetricStats of(const std::vector<snapshot::SnapshotPoint>& points,
                          std::optional<std::string> unit);

    View body(const views::Environment& environment) const;
    bool operator==(const MetricStats&) const = default;

private:
    View stat(const std::string& label, std::optional<double> value,
              const locale::UserLocale& locale) const;
};

}  // namespace tessary::metric
