#include "desktop/windows/drag_grid.h"

#include <gtk/gtk.h>
#include <optional>

#include "desktop/glib/connect.h"
#include "desktop/windows/layer_shell.h"
#include "desktop/windows/picture.h"

namespace tessary::windows {

using namespace places;
using namespace client;

/// The surface above one monitor.
struct DragGrid::Sheet {
    Sheet(const Monitor& theMonitor, const Picture& thePicture, Size theSize)
        : monitor{theMonitor}, picture{thePicture}, size{theSize} {
        const auto window = GTK_WINDOW(widget);
        makeSeeThrough(widget);
        if (hasLayerShell()) {
            makeLayerSurface(window, GTK_LAYER_SHELL_LAYER_TOP,
                             {GTK_LAYER_SHELL_EDGE_LEFT, GTK_LAYER_SHELL_EDGE_RIGHT,
                              GTK_LAYER_SHELL_EDGE_TOP, GTK_LAYER_SHELL_EDGE_BOTTOM});
            setLayerMonitor(window, monitor.number);
        } else {
            gtk_window_move(window, monitor.origin.x, monitor.origin.y);
            gtk_window_resize(window, monitor.area.width, monitor.area.height);
        }
        glib::connect(widget, "draw", [this](cairo_t* cairo) { return draw(cairo), true; });
        gtk_widget_realize(widget);
        cairo_region_t* nowhere = cairo_region_create();
        gtk_widget_input_shape_combine_region(widget, nowhere);
        cairo_region_destroy(nowhere);
        gtk_widget_show(widget);
    }
    ~Sheet() { gtk_widget_destroy(widget); }
    Sheet(const Sheet&) = delete;
    Sheet& operator=(const Sheet&) = delete;

    void show(std::optional<Position> position) {
        if (position == shadow) return;
        for (const auto& at : {shadow, position})
            if (at) gtk_widget_queue_draw_area(widget, at->x, at->y, size.width, size.height);
        shadow = position;
    }

    void draw(cairo_t* cairo) const {
        clear(cairo);
        drawDots(cairo);
        if (!shadow) return;
        cairo_translate(cairo, shadow->x, shadow->y);
        paint(cairo, picture, size, 0.75);
    }

    /// In each half of the area, counted from its own edge, as places are. Light with a dark rim,
    /// so that they are seen on any ground.
    void drawDots(cairo_t* cairo) const {
        const int width = gtk_widget_get_allocated_width(widget);
        const int height = gtk_widget_get_allocated_height(widget);
        const auto dots = [&](double radius) {
            for (int x = gridStep; x <= width / 2; x += gridStep)
                for (int y = gridStep; y <= height / 2; y += gridStep)
                    for (const int fromX : {x, width - x})
                        for (const int fromY : {y, height - y}) {
                            cairo_new_sub_path(cairo);
                            cairo_arc(cairo, fromX, fromY, radius, 0, 2 * G_PI);
                        }
            cairo_fill(cairo);
        };
        cairo_set_source_rgba(cairo, 0, 0, 0, 0.25);
        dots(1.5);
        cairo_set_source_rgba(cairo, 1, 1, 1, 0.5);
        dots(1);
    }

    Monitor monitor;
    Picture picture;
    Size size;
    std::optional<Position> shadow{};
    GtkWidget* widget{gtk_window_new(GTK_WINDOW_POPUP)};
};

bool DragGrid::isPossible() { return gdk_screen_is_composited(gdk_screen_get_default()); }

DragGrid::DragGrid(const std::vector<Monitor>& monitors, const Picture& picture, Size widget) {
    for (const auto& monitor : monitors)
        sheets_.push_back(std::make_unique<Sheet>(monitor, picture, widget));
}

DragGrid::~DragGrid() = default;

void DragGrid::show(const Place& place) {
    for (const auto& sheet : sheets_) {
        const bool isIt = sheet->monitor.name == place.monitor;
        sheet->show(isIt ? std::optional{topLeft(place, sheet->size, sheet->monitor.area)}
                         : std::nullopt);
    }
}

}  // namespace tessary::windows
