// Outlines: moves, straight segments, cubic curves and closes, in points.
#pragma once

#include <utility>
#include <vector>

#include "platform/views/geometry.h"

namespace tessary::views {

struct PathCommand {
    enum class Verb { move, line, curve, close };
    Verb verb{Verb::move};
    Point to{};
    Point control1{};  ///< curve only: leaves the current point towards here
    Point control2{};  ///< curve only: arrives at `to` from here
    bool operator==(const PathCommand&) const = default;
};

/// An outline, built command by command; a line or curve without a current point starts at its end.
///
///     Path line;
///     line.move({0, 10}).line({20, 10});
class Path {
public:
    Path& move(Point to) { return add({PathCommand::Verb::move, to, {}, {}}); }
    Path& line(Point to) { return add({PathCommand::Verb::line, to, {}, {}}); }
    Path& curve(Point control1, Point control2, Point to) {
        return add({PathCommand::Verb::curve, to, control1, control2});
    }
    Path& close() { return add({PathCommand::Verb::close, {}, {}, {}}); }

    /// Appends another outline's commands unchanged.
    Path& append(const Path& other);
    /// Appends a closed rectangle, corners rounded with circular arcs of `radius` (at most half the
    /// shorter side); clockwise from the top left.
    Path& rectangle(const Rect& rect, double radius = 0);
    /// Appends a closed ellipse that fills `rect`, clockwise from its rightmost point.
    Path& ellipse(const Rect& rect);
    /// Appends a closed circle.
    Path& circle(Point center, double radius);

    /// Every coordinate multiplied by (`sx`, `sy`), then moved by `by`.
    Path transformed(double sx, double sy, Point by) const;

    bool empty() const { return commands_.empty(); }
    const std::vector<PathCommand>& commands() const& { return commands_; }
    std::vector<PathCommand> commands() && { return std::move(commands_); }
    bool operator==(const Path&) const = default;

private:
    Path& add(PathCommand command) {
        commands_.push_back(command);
        return *this;
    }
    std::vector<PathCommand> commands_{};
};

}  // namespace tessary::views
