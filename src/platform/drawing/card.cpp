#include "platform/drawing/card.h"

#include <array>
#include <cmath>
#include <numbers>

#include "platform/views/layout.h"

namespace tessary::drawing {

using views::Path;
using views::Point;
using views::Rect;

namespace {

/// How much of a corner is transition: 0 is a circular corner, 1 has no circular part at all.
constexpr double smoothing = 0.6;

/// The lengths of one corner. Along an edge: `reach` from the corner's apex to where the bend
/// begins, of which the transition curve takes a + b + c; its end lies d away from the edge, where
/// a circular arc of `turn` radians to either side of the diagonal takes over.
struct Corner {
    double radius{};
    double reach{};
    double a{}, b{}, c{}, d{};
    double arc{};  ///< length of the arc's chord in x and in y

    Corner(double wanted, double room) {
        radius = std::min(wanted, room);
        const double smooth = std::min(smoothing, radius > 0 ? room / radius - 1 : 0);
        reach = (1 + smooth) * radius;
        const double half = std::numbers::pi / 4;
        const double bend = half * smooth;                    // turned by each transition
        const double turn = std::numbers::pi / 2 - 2 * bend;  // turned by the arc
        const double tangent = radius * std::tan(bend / 2);
        c = tangent * std::cos(bend);
        d = tangent * std::sin(bend);
        arc = 2 * radius * std::sin(turn / 2) / std::numbers::sqrt2;
        // With this b the transition curve ends as bent as the arc goes on: b sin(bend) * 2/3, over
        // the square of its last handle, the tangent, is 1 / radius.
        b = 0.75 * tangent / std::pow(std::cos(bend / 2), 2);
        a = reach - arc - c - d - b;
    }
};

/// Draws the corner at `apex`; `in` is the direction of travel before it, `out` behind it.
void bend(Path& path, const Corner& corner, Point apex, Point in, Point out) {
    const auto at = [&](double before, double behind) {
        return Point{apex.x - in.x * before + out.x * behind,
                     apex.y - in.y * before + out.y * behind};
    };
    const double reach = corner.reach;
    const double joint = reach - corner.a - corner.b - corner.c;
    path.line(at(reach, 0));
    path.curve(at(reach - corner.a, 0), at(reach - corner.a - corner.b, 0), at(joint, corner.d));
    // The arc as one curve: it turns by a third of a quarter at the usual smoothing.
    const double turn =
        2 * std::asin(std::min(1.0, corner.arc / (std::numbers::sqrt2 * corner.radius)));
    const double handle = 4.0 / 3.0 * std::tan(turn / 4) * corner.radius;
    const double lead = std::numbers::pi / 4 - turn / 2;  // direction of travel where it begins
    const double hx = handle * std::cos(lead);
    const double hy = handle * std::sin(lead);
    path.curve(at(joint - hx, corner.d + hy), at(corner.d + hy, joint - hx), at(corner.d, joint));
    path.curve(at(0, reach - corner.a - corner.b), at(0, reach - corner.a), at(0, reach));
}

/// A corner of a rectangle: where it lies, and which way an outline goes before and behind it.
struct Apex {
    Point at{};
    Point in{};
    Point out{};
};
std::array<Apex, 4> apexes(const Rect& rect) {
    return {{{{rect.maxX(), rect.minY()}, {1, 0}, {0, 1}},
             {{rect.maxX(), rect.maxY()}, {0, 1}, {-1, 0}},
             {{rect.minX(), rect.maxY()}, {-1, 0}, {0, -1}},
             {{rect.minX(), rect.minY()}, {0, -1}, {1, 0}}}};
}

Corner cornerOf(const Rect& rect, double radius) {
    return {radius, std::min(rect.size.width, rect.size.height) / 2};
}

Rect cardRectangle(const views::DisplayList& list) {
    return views::PixelGrid{list.scale}.snap({{0, 0}, list.size});
}

}  // namespace

Path continuousRectangle(const Rect& rect, double radius) {
    Path path;
    const Corner corner = cornerOf(rect, radius);
    if (corner.radius <= 0) return path.rectangle(rect);
    path.move({rect.minX() + corner.reach, rect.minY()});
    for (const Apex& apex : apexes(rect)) bend(path, corner, apex.at, apex.in, apex.out);
    return path.close();
}

Path cardOutline(const views::DisplayList& list) {
    return continuousRectangle(cardRectangle(list), list.cornerRadius);
}

PixelSize pixelSize(const views::DisplayList& list) {
    const Rect card = cardRectangle(list);
    return {static_cast<int>(std::lround(card.size.width * list.scale)),
            static_cast<int>(std::lround(card.size.height * list.scale))};
}

double baseline(const views::DisplayList& list, const views::Element& element,
                const views::TextElement& text, std::size_t index) {
    const double lines = static_cast<double>(index) * text.font.lineHeight();
    const double below = (lines + text.font.ascent()) * text.shrink;
    return views::PixelGrid{list.scale}.snap(element.frame.minY() + below);
}

}  // namespace tessary::drawing
