// The card that a widget is drawn on.
#pragma once

#include "platform/views/display_list.h"
#include "platform/views/path.h"

namespace tessary::drawing {

/// A rectangle whose corners bend continuously: the curvature rises from the straight edge to that
/// of a circle of `radius` and falls again, so no joint shows. The bend takes up to 1.6 radii of an
/// edge, less where the rectangle is small.
views::Path continuousRectangle(const views::Rect& rect, double radius);

/// The outline of a display list's card, its edges on pixels.
views::Path cardOutline(const views::DisplayList& list);

/// The card's size in whole pixels.
struct PixelSize {
    int width{};
    int height{};
    bool operator==(const PixelSize&) const = default;
};
PixelSize pixelSize(const views::DisplayList& list);

/// The baseline of a text's line `index`, moved to a pixel, in points from the card's top.
double baseline(const views::DisplayList& list, const views::Element& element,
                const views::TextElement& text, std::size_t index);

}  // namespace tessary::drawing
