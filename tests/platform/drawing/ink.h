// Pixels as text.
#pragma once

#include <string>

#include "platform/drawing/cairo_painter.h"

namespace tessary::drawing {

/// A character for each pixel of every other row, characters being twice as high as wide: "." where
/// it is clear, else R or B for its stronger colour, small where most shines through.
inline std::string inked(const Pixels& pixels) {
    std::string text;
    for (int y = 0; y < pixels.height; y += 2) {
        for (int x = 0; x < pixels.width; ++x) {
            const auto pixel = pixels.values.at(static_cast<std::size_t>(y * pixels.width + x));
            const auto alpha = pixel >> 24U, red = pixel >> 16U & 0xFFU, blue = pixel & 0xFFU;
            const char strong = red >= blue ? 'R' : 'B', faint = red >= blue ? 'r' : 'b';
            text += alpha < 32 ? '.' : alpha < 112 ? faint : strong;
        }
        text.resize(text.find_last_not_of('.') + 1);
        text += '\n';
    }
    return text;
}

}  // namespace tessary::drawing
