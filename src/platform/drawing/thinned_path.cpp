#include "platform/drawing/thinned_path.h"

#include <array>
#include <cmath>
#include <optional>

namespace tessary::drawing {

using views::Path;
using views::PathCommand;
using views::Point;

namespace {

/// Corners that follow each other in one column of pixels, as far as they show.
struct Group {
    double column{};
    Point first{}, lowest{}, highest{}, last{};
    bool isLowestFirst{true};  ///< the lowest corner comes before the highest

    void include(Point corner) {
        if (corner.y < lowest.y) {
            lowest = corner;
            isLowestFirst = false;
        }
        if (corner.y > highest.y) {
            highest = corner;
            isLowestFirst = true;
        }
        last = corner;
    }
    std::array<Point, 4> corners() const {
        if (isLowestFirst) return {first, lowest, highest, last};
        return {first, highest, lowest, last};
    }
};

/// Hands every group of corners to `use`, in order; there may be as many as corners.
template <class Use>
void eachGroup(const std::vector<Point>& corners, double columnsPerPoint, const Use& use) {
    std::optional<Group> group;
    for (const Point& corner : corners) {
        const double column = std::floor(corner.x * columnsPerPoint);
        if (group && group->column == column) {
            group->include(corner);
            continue;
        }
        if (group) use(*group);
        group = Group{column, corner, corner, corner, corner};
    }
    if (group) use(*group);
}

/// Adds a line through corners to a path, whose first corner starts it.
void addLine(Path& path, const std::vector<Point>& corners, double scale) {
    constexpr double columnsPerPixel = 2;
    std::size_t groups = 0;
    eachGroup(corners, columnsPerPixel * scale, [&](const Group&) { ++groups; });
    const std::size_t step = 1 + groups / manyCommands;
    path.move(corners.front());
    Point at = corners.front();
    std::size_t index = 0;
    eachGroup(corners, columnsPerPixel * scale, [&](const Group& group) {
        if (index++ % step != 0) return;
        for (const Point& corner : group.corners())
            if (corner != at) path.line(at = corner);
    });
    if (at != corners.back()) path.line(corners.back());
}

}  // namespace

Path thinned(const Path& path, double scale) {
    if (path.size() <= manyCommands) return path;
    Path result;
    std::vector<Point> corners;
    bool hasCurves = false;
    const auto finish = [&] {
        if (!corners.empty()) addLine(result, corners, scale);
        corners.clear();
    };
    path.each([&](const PathCommand& command) {
        hasCurves |= command.verb == PathCommand::Verb::curve;
        if (command.verb != PathCommand::Verb::line) finish();
        if (command.verb == PathCommand::Verb::close)
            result.close();
        else
            corners.push_back(command.to);
    });
    finish();
    return hasCurves ? path : result;
}

}  // namespace tessary::drawing
