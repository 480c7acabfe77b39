// The extension's pictures, and what they are painted on.
#pragma once

#include <gtk/gtk.h>
#include <memory>

#include "desktop/client/messages.h"
#include "desktop/places/placement.h"

namespace tessary::windows {

/// Pixels per point on the screen that a widget is on, 1 to 4, as the extension can draw them.
int scaleOf(GtkWidget* widget);

/// Lets a window that is not yet realized be seen through, where the screen can show that.
void makeSeeThrough(GtkWidget* window);

/// Wipes off what there is.
void clear(cairo_t* cairo);

struct DestroySurface {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
using Surface = std::unique_ptr<cairo_surface_t, DestroySurface>;

/// The picture's pixels, for use as so many points. Null where the picture is absent or damaged.
Surface decode(const client::Picture& picture, places::Size points);

/// Paints the picture with its upper left corner at the context's origin; nothing, and false, where
/// it is absent or damaged. It is decoded each time: windows are drawn rarely, and the pixels would
/// be the most that a widget holds.
bool paint(cairo_t* cairo, const client::Picture& picture, places::Size points, double opacity = 1);

}  // namespace tessary::windows
