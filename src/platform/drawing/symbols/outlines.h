// Outlines that symbols are made of, beyond what a path offers by itself. Angles are in radians,
// from the right and clockwise, as y grows downward.
#pragma once

#include <numbers>
#include <span>

#include "platform/views/path.h"

namespace tessary::drawing {

inline constexpr double halfTurn = std::numbers::pi;

/// The point at that angle and distance from `center`.
views::Point around(views::Point center, double radius, double angle);

/// Appends a circular arc from one angle to the other, and before it a line to where it starts, or
/// a move when the path is empty.
void appendArc(views::Path& path, views::Point center, double radius, double from, double to);

/// What a stroke of that width along the points covers, with round ends and round outer joins, as
/// one closed outline that does not cross itself. Each segment must be longer than its joins reach.
views::Path band(std::span<const views::Point> points, double width);

/// A closed polygon, its corners given clockwise and rounded with arcs of that radius.
views::Path roundedPolygon(std::span<const views::Point> corners, double radius);

/// The path, and the same path reflected in the vertical axis at x = 0.
views::Path mirrored(const views::Path& path);

/// From where to where a path reaches horizontally.
struct Extent {
    double min{};
    double max{};
};
Extent horizontalExtent(const views::Path& path);

}  // namespace tessary::drawing
