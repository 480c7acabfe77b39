// The outlined symbols: lines of the weight's width, and the slash that crosses some of them out.
#include <array>

#include "platform/drawing/symbols/drawings.h"
#include "platform/drawing/symbols/outlines.h"

namespace tessary::drawing {

using views::Path;
using views::Point;

namespace {

/// Leaves a clear slash in every part and puts a slash there.
Parts slashed(Parts parts, Point from, Point to, const Pen& pen) {
    const std::array<Point, 2> line{from, to};
    for (SymbolPart& part : parts) part.cutout = band(line, pen.stroke + 2 * pen.gap);
    Path slash;
    slash.move(from).line(to);
    parts.push_back({slash, pen.stroke, {}});
    return parts;
}

}  // namespace

Parts slashedBell(const Pen& pen) {
    constexpr double rim = 0.255;
    Path side;
    side.move({0, -0.445})
        .curve({0.16, -0.445}, {0.265, -0.33}, {0.265, -0.16})
        .curve({0.265, 0.06}, {0.38, 0.09}, {0.38, 0.195})
        .curve({0.38, 0.235}, {0.36, rim}, {0.32, rim})
        .line({0, rim});
    const double top = rim + pen.stroke / 2 + 0.06;
    Path clapper;
    clapper.move({-0.13, top})
        .line({0.13, top})
        .curve({0.12, top + 0.07}, {0.07, top + 0.115}, {0, top + 0.115})
        .curve({-0.07, top + 0.115}, {-0.12, top + 0.07}, {-0.13, top})
        .close();
    return slashed({{mirrored(side), pen.stroke, {}}, {clapper, 0, {}}}, {-0.43, -0.43},
                   {0.43, 0.43}, pen);
}

Parts slashedPin(const Pen& pen) {
    constexpr double collar = 0.195;
    Path side;
    side.move({0, -0.475})
        .line({0.2, -0.475})
        .move({0.15, -0.475})
        .line({0.15, -0.32})
        .curve({0.15, -0.17}, {0.285, -0.2}, {0.285, 0.02})
        .line({0.285, 0.125})
        .curve({0.285, 0.165}, {0.265, collar}, {0.22, collar})
        .line({0, collar});
    Path pin = mirrored(side);
    pin.move({0, collar}).line({0, 0.49});
    return slashed({{pin, pen.stroke, {}}}, {-0.425, -0.445}, {0.45, 0.43}, pen);
}

/// The index finger points up; the others are curled, and lie close beside one another whatever
/// the width of the line between them.
Parts tappingHand(const Pen& pen) {
    constexpr Point tip{-0.09, -0.2};
    const double finger = 0.06 + pen.stroke * 0.45;
    const double curled = 0.0425 + pen.stroke * 0.35;
    const double thumb = 0.31 + pen.stroke * 0.75;
    Path hand;
    appendArc(hand, tip, finger, -halfTurn, 0);
    double x = tip.x + finger;
    for (const double knuckle : {0.055, 0.09, 0.14}) {
        appendArc(hand, {x + curled, knuckle}, curled, -halfTurn, 0);
        x += 2 * curled;
        hand.line({x, knuckle + 0.055});
    }
    hand.curve({x, 0.39}, {x - 0.11, 0.5}, {x - 0.3, 0.5})
        .curve({-0.02, 0.5}, {-0.105, 0.455}, {-0.18, 0.37})
        .line({-thumb, 0.15})
        .curve({-thumb - 0.06, 0.07}, {-0.34, -0.02}, {-0.27, 0.05})
        .line({tip.x - finger, 0.13})
        .close();
    Path tap;
    appendArc(tap, tip, 0.18 + finger, -halfTurn, 0);
    return {{hand, pen.stroke, {}}, {tap, pen.stroke, {}}};
}

}  // namespace tessary::drawing
