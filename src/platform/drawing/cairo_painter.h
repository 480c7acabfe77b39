// Painting a display list with Cairo: into pixels, or into a PDF document.
//
//     const Pixels pixels = paintPixels(list, typesetter);      // 328 x 328 for a small card at 2
//     encodePNG(pixels)                                          // png_encoder.h
#pragma once

#include <string>

#include "platform/drawing/pango_typesetter.h"
#include "platform/drawing/pixels.h"
#include "platform/foundation/date.h"
#include "platform/views/display_list.h"

namespace tessary::drawing {

/// The card as pixels, clear outside its corners.
Pixels paintPixels(const views::DisplayList& list, PangoTypesetter& typesetter);

/// Glyphs by themselves, where no outline tells what they look like.
struct GlyphPicture {
    Pixels pixels{};
    views::Rect frame{};  ///< points, from the left end of the line's baseline
};
GlyphPicture paintGlyphs(const GlyphRun& run);

/// A PDF document of one page, the card's size in points, dated `date`. Texts stay texts where the
/// font has them. The same list gives the same bytes.
std::string paintPDF(const views::DisplayList& list, PangoTypesetter& typesetter,
                     foundation::Date date);

}  // namespace tessary::drawing
