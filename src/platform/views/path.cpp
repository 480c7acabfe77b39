#include "platform/views/path.h"

#include <algorithm>

namespace tessary::views {

namespace {

/// How far the control points of a quarter circle of radius 1 lie along its tangents.
constexpr double quarterArc = 0.5522847498307936;

}  // namespace

Path& Path::append(const Path& other) {
    verbs_.insert(verbs_.end(), other.verbs_.begin(), other.verbs_.end());
    points_.insert(points_.end(), other.points_.begin(), other.points_.end());
    return *this;
}

std::vector<PathCommand> Path::commands() const {
    std::vector<PathCommand> commands;
    commands.reserve(verbs_.size());
    each([&](const PathCommand& command) { commands.push_back(command); });
    return commands;
}

Path& Path::rectangle(const Rect& rect, double radius) {
    const double x0 = rect.minX();
    const double y0 = rect.minY();
    const double x1 = rect.maxX();
    const double y1 = rect.maxY();
    if (radius <= 0) return move({x0, y0}).line({x1, y0}).line({x1, y1}).line({x0, y1}).close();

    const double r = std::min({radius, rect.size.width / 2, rect.size.height / 2});
    const double k = r * (1 - quarterArc);
    return move({x0 + r, y0})
        .line({x1 - r, y0})
        .curve({x1 - k, y0}, {x1, y0 + k}, {x1, y0 + r})
        .line({x1, y1 - r})
        .curve({x1, y1 - k}, {x1 - k, y1}, {x1 - r, y1})
        .line({x0 + r, y1})
        .curve({x0 + k, y1}, {x0, y1 - k}, {x0, y1 - r})
        .line({x0, y0 + r})
        .curve({x0, y0 + k}, {x0 + k, y0}, {x0 + r, y0})
        .close();
}

Path& Path::ellipse(const Rect& rect) {
    const double cx = rect.midX();
    const double cy = rect.midY();
    const double rx = rect.size.width / 2;
    const double ry = rect.size.height / 2;
    const double kx = rx * quarterArc;
    const double ky = ry * quarterArc;
    return move({cx + rx, cy})
        .curve({cx + rx, cy + ky}, {cx + kx, cy + ry}, {cx, cy + ry})
        .curve({cx - kx, cy + ry}, {cx - rx, cy + ky}, {cx - rx, cy})
        .curve({cx - rx, cy - ky}, {cx - kx, cy - ry}, {cx, cy - ry})
        .curve({cx + kx, cy - ry}, {cx + rx, cy - ky}, {cx + rx, cy})
        .close();
}

Path& Path::circle(Point center, double radius) {
    return ellipse({{center.x - radius, center.y - radius}, {2 * radius, 2 * radius}});
}

Path Path::transformed(double sx, double sy, Point by) const {
    const auto map = [&](Point p) { return Point{p.x * sx + by.x, p.y * sy + by.y}; };
    Path result = *this;
    for (Point& point : result.points_) point = map(point);
    return result;
}

}  // namespace tessary::views
