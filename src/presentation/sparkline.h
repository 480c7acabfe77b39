// A small chart of recent samples.
#pragma once

#include <optional>
#include <vector>

#include "platform/views/view.h"
#include "snapshot/pins_snapshot.h"

namespace tessary::presentation {

/// A line through the points with a soft gradient under it and a dashed line at the threshold,
/// scaled to the room that it is given: the first and last times to its sides, the lowest and
/// highest values (the threshold's included) to 92 % and 8 % of its height. Points are drawn in the
/// order given, neither sorted nor clipped. A series that cannot be scaled (fewer than two points,
/// no time from the first to the last, or more of it than 64 bits hold) is a thin line at the
/// bottom.
struct Sparkline {
    std::vector<snapshot::SnapshotPoint> points{};
    std::optional<double> threshold{};  ///< in the points' unit
    views::Color color{};

    views::View body(const views::Size& size) const;
    bool operator==(const Sparkline&) const = default;

private:
    std::optional<double> timeSpan() const;
};

}  // namespace tessary::presentation
