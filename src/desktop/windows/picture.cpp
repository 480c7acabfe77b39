#include "desktop/windows/picture.h"

#include <algorithm>
#include <string_view>

namespace tessary::windows {

using namespace places;
using namespace client;

int scaleOf(GtkWidget* widget) { return std::clamp(gtk_widget_get_scale_factor(widget), 1, 4); }

void makeSeeThrough(GtkWidget* window) {
    gtk_widget_set_app_paintable(window, TRUE);
    if (const auto visual = gdk_screen_get_rgba_visual(gtk_widget_get_screen(window)))
        gtk_widget_set_visual(window, visual);
}

void clear(cairo_t* cairo) {
    cairo_set_operator(cairo, CAIRO_OPERATOR_SOURCE);
    cairo_set_source_rgba(cairo, 0, 0, 0, 0);
    cairo_paint(cairo);
    cairo_set_operator(cairo, CAIRO_OPERATOR_OVER);
}

Surface decode(const Picture& picture, Size points) {
    if (!picture) return nullptr;
    std::string_view bytes{*picture};
    const auto read = [](void* closure, unsigned char* to, unsigned size) {
        auto& rest = *static_cast<std::string_view*>(closure);
        if (rest.size() < size) return CAIRO_STATUS_READ_ERROR;
        std::copy_n(rest.begin(), size, to);
        rest.remove_prefix(size);
        return CAIRO_STATUS_SUCCESS;
    };
    Surface pixels{cairo_image_surface_create_from_png_stream(read, &bytes)};
    if (cairo_surface_status(pixels.get()) != CAIRO_STATUS_SUCCESS) return nullptr;
    const double perPoint =
        static_cast<double>(cairo_image_surface_get_height(pixels.get())) / points.height;
    cairo_surface_set_device_scale(pixels.get(), perPoint, perPoint);
    return pixels;
}

bool paint(cairo_t* cairo, const Picture& picture, Size points, double opacity) {
    const auto pixels = decode(picture, points);
    if (!pixels) return false;
    cairo_set_source_surface(cairo, pixels.get(), 0, 0);
    cairo_paint_with_alpha(cairo, opacity);
    return true;
}

}  // namespace tessary::windows
