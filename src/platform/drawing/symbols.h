// The system's symbols, drawn here as outlines: a name and a weight in, shapes out.
//
// Use `symbol` to measure and to paint; it depends on nothing but its arguments.
//
//     const Symbol bell = symbol("bell.slash", Weight::medium);
//     // at a font size of 22 points it takes bell.size.width * 22 by bell.size.height * 22 points
#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "platform/views/font.h"
#include "platform/views/path.h"

namespace tessary::drawing {

/// One shape of a symbol, in ems (1 is the font's size), from the top left of the symbol's frame.
struct SymbolPart {
    views::Path path{};
    double stroke{};       ///< width of the stroke, with round caps and joins; 0: filled, even-odd
    views::Path cutout{};  ///< closed outlines that this shape leaves free; they do not overlap
    bool operator==(const SymbolPart&) const = default;
};

/// A symbol, in ems. Its height is a line's height, so that the middle of its frame, where its
/// drawing is centred, meets the middle of the capitals of text beside it.
struct Symbol {
    views::Size size{};
    std::vector<SymbolPart> parts{};
    bool operator==(const Symbol&) const = default;
};

/// The symbol of that name; a dotted square for a name that has no drawing.
Symbol symbol(std::string_view name, views::Weight weight);

/// Every name that has a drawing, in alphabetical order.
std::span<const std::string_view> symbolNames();

}  // namespace tessary::drawing
