// The filled symbols. Each is one shape, its marks holes in it.
#include <array>
#include <cmath>

#include "platform/drawing/symbols/drawings.h"
#include "platform/drawing/symbols/outlines.h"

namespace tessary::drawing {

using views::Path;
using views::Point;

namespace {

Parts filled(const Path& path) { return {{path, 0, {}}}; }

/// An exclamation mark from `top` to `bottom`, its bar a little wider above than below.
Path exclamationMark(Point top, double bottom, double width) {
    const double dot = width * 0.6;
    const double above = width * 0.54;
    const double below = width * 0.42;
    Path path;
    appendArc(path, {top.x, top.y + above}, above, -halfTurn, 0);
    appendArc(path, {top.x, bottom - 2 * dot - width * 0.65 - below}, below, 0, halfTurn);
    return path.close().circle({top.x, bottom - dot}, dot);
}

}  // namespace

Parts checkmarkInCircle(const Pen& pen) {
    constexpr std::array<Point, 3> check{{{-0.2, 0.04}, {-0.062, 0.19}, {0.2, -0.185}}};
    Path path;
    path.circle({}, pen.round).append(band(check, pen.mark));
    return filled(path);
}

Parts pauseInCircle(const Pen& pen) {
    const double width = pen.mark * 1.1;
    const views::Rect bar{{0.065, -0.2}, {width, 0.4}};
    Path right;
    right.rectangle(bar, width * 0.35);
    Path path;
    path.circle({}, pen.round).append(mirrored(right));
    return filled(path);
}

Parts exclamationMarkInTriangle(const Pen& pen) {
    const double grow = pen.round - 0.49;
    const std::array<Point, 3> corners{
        {{0, -0.62 - grow}, {0.62 + grow, 0.435 + grow}, {-0.62 - grow, 0.435 + grow}}};
    Path path = roundedPolygon(corners, 0.115);
    path.append(exclamationMark({0, -0.25}, 0.31, pen.mark));
    return filled(path);
}

Parts lock(const Pen& pen) {
    constexpr double side = 0.325;
    constexpr double top = -0.055;
    constexpr double bottom = 0.475;
    constexpr double corner = 0.09;
    const double outer = 0.17 + pen.stroke * 0.55;
    const double inner = 0.17 - pen.stroke * 0.55;
    const Point bow{0, -0.48 + outer};
    Path path;
    path.move({-outer, top});
    appendArc(path, bow, outer, -halfTurn, 0);
    path.line({outer, top});
    appendArc(path, {side - corner, top + corner}, corner, -halfTurn / 2, 0);
    appendArc(path, {side - corner, bottom - corner}, corner, 0, halfTurn / 2);
    appendArc(path, {corner - side, bottom - corner}, corner, halfTurn / 2, halfTurn);
    appendArc(path, {corner - side, top + corner}, corner, halfTurn, halfTurn * 3 / 2);
    path.close().move({inner, top});
    appendArc(path, bow, inner, 0, -halfTurn);
    path.line({-inner, top}).close();
    return filled(path);
}

/// The circle's inside is a hole that ends at the shoulders, and the head an island in it.
Parts personInCircleWithBadge(const Pen& pen) {
    const double inner = pen.round - pen.stroke;
    const double reach = 0.26 * halfTurn;
    const Point right = around({}, inner, reach);
    Path person;
    person.circle({}, pen.round);
    Path inside;
    appendArc(inside, {}, inner, halfTurn - reach, 2 * halfTurn + reach);
    inside.curve({right.x - 0.06, 0.17}, {0.12, 0.125}, {0, 0.125})
        .curve({-0.12, 0.125}, {-right.x + 0.06, 0.17}, {-right.x, right.y})
        .close();
    person.append(inside).circle({0, -0.115}, 0.155 + pen.stroke * 0.1);

    const Point badge{0.36, 0.28};
    const double radius = 0.235 + pen.stroke * 0.3;
    Path clear;
    clear.circle(badge, radius + pen.gap);
    Path disc;
    disc.circle(badge, radius);
    disc.append(exclamationMark({badge.x, badge.y - radius * 0.68}, badge.y + radius * 0.66,
                                pen.mark * 0.8));
    return {{person, 0, clear}, {disc, 0, {}}};
}

/// Three dots along each side and one at each corner, neighbours equally far apart.
Parts dottedSquare(const Pen& pen) {
    constexpr double half = 0.42;
    const double step = half / (1 + 0.5 / std::sin(halfTurn / 8));
    const double corner = step + (half - step) * std::sqrt(0.5);
    Path path;
    for (const Point dot : {Point{-step, -half}, {0, -half}, {step, -half}, {corner, -corner}}) {
        path.circle(dot, pen.stroke * 0.55)
            .circle({-dot.x, -dot.y}, pen.stroke * 0.55)
            .circle({-dot.y, dot.x}, pen.stroke * 0.55)
            .circle({dot.y, -dot.x}, pen.stroke * 0.55);
    }
    return filled(path);
}

}  // namespace tessary::drawing
