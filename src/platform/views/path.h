// Outlines: moves, straight segments, cubic curves and closes, in points.
#pragma once

#include <concepts>
#include <cstddef>
#include <vector>

#include "platform/views/geometry.h"

namespace tessary::views {

struct PathCommand {
    enum class Verb : unsigned char { move, line, curve, close };
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

    bool empty() const { return verbs_.empty(); }
    std::size_t size() const { return verbs_.size(); }
    /// Hands every command to `use`, in order.
    template <std::invocable<const PathCommand&> Use>
    void each(Use&& use) const {
        auto point = points_.begin();
        for (const PathCommand::Verb verb : verbs_) {
            PathCommand command{verb, {}, {}, {}};
            if (verb == PathCommand::Verb::curve) {
                command.control1 = *point++;
                command.control2 = *point++;
            }
            if (verb != PathCommand::Verb::close) command.to = *point++;
            use(command);
        }
    }
    /// All of them at once, which takes three times the room of the path.
    std::vector<PathCommand> commands() const;
    bool operator==(const Path&) const = default;

private:
    Path& add(const PathCommand& command) {
        verbs_.push_back(command.verb);
        if (command.verb == PathCommand::Verb::curve) {
            points_.push_back(command.control1);
            points_.push_back(command.control2);
        }
        if (command.verb != PathCommand::Verb::close) points_.push_back(command.to);
        return *this;
    }
    std::vector<PathCommand::Verb> verbs_{};
    std::vector<Point> points_{};  ///< what the verbs take: a curve three, a close none
};

}  // namespace tessary::views
