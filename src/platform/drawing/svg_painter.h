// A display list as an SVG document.
#pragma once

#include <string>
#include <string_view>

#include "platform/drawing/pango_typesetter.h"
#include "platform/views/display_list.h"

namespace tessary::drawing {

/// A whole document, the card's size in points, that needs no font: texts are outlines, emoji
/// embedded pictures, and what they say stands in the document's title. Identifiers begin with
/// `prefix`, so that several documents can stand in one page.
std::string paintSVG(const views::DisplayList& list, PangoTypesetter& typesetter,
                     std::string_view prefix = "w");

}  // namespace tessary::drawing
