// The symbols' drawings, one function each. A drawing is in ems around a point of its own, which
// meets the middle of the capitals beside it; where it ends to the left and right is its own
// affair.
#pragma once

#include <vector>

#include "platform/drawing/symbols.h"

namespace tessary::drawing {

/// What a weight draws with, in ems.
struct Pen {
    double stroke{};  ///< width of a line
    double mark{};    ///< width of the lines of a mark that is left free in a filled shape
    double gap{};     ///< clear space between shapes that pass one another
    double round{};  ///< radius of a symbol that is round; a little more for heavier weights, whose
                     ///< marks would else take from the symbol what its weight should add
};

using Parts = std::vector<SymbolPart>;

Parts slashedBell(const Pen& pen);
Parts checkmarkInCircle(const Pen& pen);
Parts exclamationMarkInTriangle(const Pen& pen);
Parts tappingHand(const Pen& pen);
Parts lock(const Pen& pen);
Parts pauseInCircle(const Pen& pen);
Parts personInCircleWithBadge(const Pen& pen);
Parts slashedPin(const Pen& pen);

/// What stands for a symbol that has no drawing.
Parts dottedSquare(const Pen& pen);

}  // namespace tessary::drawing
