// Pixels as a PNG file, in one pass.
#pragma once

#include <string>

#include "platform/drawing/pixels.h"

namespace tessary::drawing {

/// An 8-bit RGBA file that states sRGB and its pixels per metre (a point is 1/72 inch).
std::string encodePNG(const Pixels& pixels);

}  // namespace tessary::drawing
