// Points, sizes, rectangles and alignments. Lengths are points; x grows to the right, y downward.
#pragma once

namespace tessary::views {

struct Point {
    double x{};
    double y{};
    bool operator==(const Point&) const = default;
};

struct Size {
    double width{};
    double height{};
    bool operator==(const Size&) const = default;
};

struct Rect {
    Point origin{};
    Size size{};

    double minX() const { return origin.x; }
    double minY() const { return origin.y; }
    double maxX() const { return origin.x + size.width; }
    double maxY() const { return origin.y + size.height; }
    double midX() const { return origin.x + size.width / 2; }
    double midY() const { return origin.y + size.height / 2; }

    /// The rectangle that is left when `by` is taken off all four sides.
    Rect inset(double by) const {
        return {{origin.x + by, origin.y + by}, {size.width - 2 * by, size.height - 2 * by}};
    }
    bool operator==(const Rect&) const = default;
};

struct EdgeInsets {
    double top{};
    double leading{};
    double bottom{};
    double trailing{};

    static constexpr EdgeInsets all(double length) { return {length, length, length, length}; }
    bool operator==(const EdgeInsets&) const = default;
};

/// Where a child goes in one dimension of a place that is larger, or smaller, than itself.
enum class Along { start, center, end };

/// A place in both dimensions. Leading is the left side: the texts of the system are English.
struct Alignment {
    Along horizontal{Along::center};
    Along vertical{Along::center};

    static const Alignment center, leading, trailing, top, bottom, topLeading, topTrailing,
        bottomLeading, bottomTrailing;
    bool operator==(const Alignment&) const = default;
};

inline constexpr Alignment Alignment::center{Along::center, Along::center};
inline constexpr Alignment Alignment::leading{Along::start, Along::center};
inline constexpr Alignment Alignment::trailing{Along::end, Along::center};
inline constexpr Alignment Alignment::top{Along::center, Along::start};
inline constexpr Alignment Alignment::bottom{Along::center, Along::end};
inline constexpr Alignment Alignment::topLeading{Along::start, Along::start};
inline constexpr Alignment Alignment::topTrailing{Along::end, Along::start};
inline constexpr Alignment Alignment::bottomLeading{Along::start, Along::end};
inline constexpr Alignment Alignment::bottomTrailing{Along::end, Along::end};

/// The distance from the start of a place `room` long to a child `length` long; negative when the
/// child overflows and is centred or aligned to the end.
constexpr double offset(Along along, double room, double length) {
    switch (along) {
        case Along::start: return 0;
        case Along::center: return (room - length) / 2;
        case Along::end: return room - length;
    }
    return 0;
}

}  // namespace tessary::views
