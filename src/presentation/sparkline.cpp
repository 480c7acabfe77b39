#include "presentation/sparkline.h"

#include <algorithm>

#include "presentation/palette.h"

namespace tessary::presentation {

using namespace views;
using snapshot::SnapshotPoint;

namespace {

/// Where times and values lie in a frame, in points.
class Scaling {
public:
    Scaling(const Sparkline& chart, double timeSpan, const Size& size)
        : first_(chart.points.front().t), timeSpan_(timeSpan), size_(size) {
        low_ = high_ = chart.points.front().v;
        for (const SnapshotPoint& point : chart.points) include(point.v);
        if (chart.threshold) include(*chart.threshold);
        half_ = high_ / 2 - low_ / 2;
    }

    Point at(const SnapshotPoint& point) const { return {x(point.t), y(point.v)}; }
    double y(double value) const {
        // Halves, so that values at both ends of the range of doubles don't overflow.
        const double share = half_ == 0 ? 0 : (value / 2 - low_ / 2) / half_;
        return size_.height * (0.92 - 0.84 * share);
    }

private:
    void include(double value) {
        low_ = std::min(low_, value);
        high_ = std::max(high_, value);
    }
    double x(std::int64_t time) const { return elapsed(time) / timeSpan_ * size_.width; }
    double elapsed(std::int64_t time) const {
        std::int64_t difference = 0;
        const bool fits = !__builtin_sub_overflow(time, first_, &difference);
        return fits ? static_cast<double>(difference)
                    : static_cast<double>(time) - static_cast<double>(first_);
    }

    std::int64_t first_{};
    double timeSpan_{};
    Size size_{};
    double low_{};
    double high_{};
    double half_{};
};

View baseline(const Size& size) {
    Path path;
    path.move({0, size.height - 1}).line({size.width, size.height - 1});
    return PaintedPath(std::move(path), Stroke{.color = Palette::tertiary.withOpacity(0.5)});
}

View thresholdLine(const Size& size, double y) {
    Path path;
    path.move({0, y}).line({size.width, y});
    return PaintedPath(std::move(path),
                       Stroke{.color = Palette::danger.withOpacity(0.8), .dash = {3, 3}});
}

}  // namespace

std::optional<double> Sparkline::timeSpan() const {
    if (points.size() < 2) return std::nullopt;
    std::int64_t span = 0;
    const bool overflows = __builtin_sub_overflow(points.back().t, points.front().t, &span);
    if (overflows || span <= 0) return std::nullopt;
    return static_cast<double>(span);
}

View Sparkline::body(const Size& size) const {
    const std::optional<double> span = timeSpan();
    if (!span) return baseline(size);

    const Scaling scaling{*this, *span, size};
    Path line;
    line.move(scaling.at(points.front()));
    for (auto point = points.begin() + 1; point != points.end(); ++point)
        line.line(scaling.at(*point));
    Path area = line;
    area.line({size.width, size.height}).line({0, size.height}).close();

    return ZStack(
        Alignment::center,
        {
            PaintedPath(std::move(area), Fill{{color.withOpacity(0.22), color.withOpacity(0)}}),
            PaintedPath(
                std::move(line),
                Stroke{
                    .color = color, .width = 1.5, .cap = LineCap::round, .join = LineJoin::round}),
            when(threshold.has_value(), [&] { return thresholdLine(size, scaling.y(*threshold)); }),
        });
}

}  // namespace tessary::presentation
