// Painting the extension's pictures.
#pragma once

#include <cairo.h>
#include <memory>

#include "desktop/client/messages.h"
#include "desktop/places/placement.h"

namespace tessary::windows {

struct DestroySurface {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
using Surface = std::unique_ptr<cairo_surface_t, DestroySurface>;

/// The picture's pixels, for use as so many points. Null where the picture is absent or damaged.
Surface decode(const client::Picture& picture, places::Size points);

/// Paints the picture with its upper left corner at the context's origin; nothing where it is
/// absent or damaged. It is decoded each time: windows are drawn rarely, and the pixels would be
/// the most that a widget holds.
void paint(cairo_t* cairo, const client::Picture& picture, places::Size points, double opacity = 1);

}  // namespace tessary::windows
