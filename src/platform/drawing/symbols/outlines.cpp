#include "platform/drawing/symbols/outlines.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace tessary::drawing {

using views::Path;
using views::PathCommand;
using views::Point;

namespace {

constexpr double quarterTurn = halfTurn / 2;

double direction(Point from, Point to) { return std::atan2(to.y - from.y, to.x - from.x); }

/// The angle as a turn, to the right when positive, of at most half a turn.
double turn(double angle) { return std::remainder(angle, 2 * halfTurn); }

/// A line to the point, or a move when the path is empty.
void appendPoint(Path& path, Point point) { path.empty() ? path.move(point) : path.line(point); }

/// One side of a band, on the left hand of who walks along the points: around the outer side of
/// each bend, across the inner side, and at the end around the end.
void appendSide(Path& path, std::span<const Point> points, double radius) {
    for (std::size_t i = 1; i + 1 < points.size(); ++i) {
        const double incoming = direction(points[i - 1], points[i]);
        const double bend = turn(direction(points[i], points[i + 1]) - incoming);
        const double left = incoming - quarterTurn;
        if (bend > 0) {
            appendArc(path, points[i], radius, left, left + bend);
        } else {
            appendPoint(path, around(points[i], radius / std::cos(bend / 2), left + bend / 2));
        }
    }
    const double left = direction(points[points.size() - 2], points.back()) - quarterTurn;
    appendArc(path, points.back(), radius, left, left + halfTurn);
}

/// A point on a curve, `t` of the way along it, in one coordinate.
double onCurve(double from, double control1, double control2, double to, double t) {
    const double s = 1 - t;
    return s * s * s * from + 3 * s * s * t * control1 + 3 * s * t * t * control2 + t * t * t * to;
}

}  // namespace

Point around(Point center, double radius, double angle) {
    return {center.x + radius * std::cos(angle), center.y + radius * std::sin(angle)};
}

void appendArc(Path& path, Point center, double radius, double from, double to) {
    appendPoint(path, around(center, radius, from));
    const double quarters = std::abs(to - from) / quarterTurn;
    const int pieces = std::max(1, static_cast<int>(std::ceil(quarters - 1e-9)));
    const double step = (to - from) / pieces;
    const double reach = radius * 4 / 3 * std::tan(step / 4);
    for (int piece = 0; piece < pieces; ++piece) {
        const double a = from + step * piece;
        const double b = a + step;
        const Point start = around(center, radius, a);
        const Point end = around(center, radius, b);
        path.curve(around(start, reach, a + quarterTurn), around(end, -reach, b + quarterTurn),
                   end);
    }
}

Path band(std::span<const Point> points, double width) {
    const std::vector<Point> back(points.rbegin(), points.rend());
    Path path;
    appendSide(path, points, width / 2);
    appendSide(path, back, width / 2);
    return path.close();
}

Path roundedPolygon(std::span<const Point> corners, double radius) {
    Path path;
    const std::size_t count = corners.size();
    for (std::size_t i = 0; i < count; ++i) {
        const Point corner = corners[i];
        const double incoming = direction(corners[(i + count - 1) % count], corner);
        const double bend = turn(direction(corner, corners[(i + 1) % count]) - incoming);
        const double left = incoming - quarterTurn;
        const Point center =
            around(corner, radius / std::cos(bend / 2), left + bend / 2 + halfTurn);
        appendArc(path, center, radius, left, left + bend);
    }
    return path.close();
}

Path mirrored(const Path& path) {
    Path both = path;
    return both.append(path.transformed(-1, 1, {}));
}

Extent horizontalExtent(const Path& path) {
    constexpr int samples = 64;
    Extent extent{std::numeric_limits<double>::infinity(),
                  -std::numeric_limits<double>::infinity()};
    const auto include = [&](double x) {
        extent = {std::min(extent.min, x), std::max(extent.max, x)};
    };
    double from = 0;
    for (const PathCommand& c : path.commands()) {
        if (c.verb == PathCommand::Verb::close) continue;
        include(c.to.x);
        if (c.verb == PathCommand::Verb::curve) {
            for (int i = 1; i < samples; ++i)
                include(onCurve(from, c.control1.x, c.control2.x, c.to.x,
                                static_cast<double>(i) / samples));
        }
        from = c.to.x;
    }
    return extent;
}

}  // namespace tessary::drawing
