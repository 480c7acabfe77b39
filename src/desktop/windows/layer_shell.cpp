#include "desktop/windows/layer_shell.h"

#include <gdk/gdkwayland.h>

namespace tessary::windows {

bool hasLayerShell() {
    return GDK_IS_WAYLAND_DISPLAY(gdk_display_get_default()) && gtk_layer_is_supported();
}

void makeLayerSurface(GtkWindow* window, GtkLayerShellLayer layer,
                      std::initializer_list<GtkLayerShellEdge> edges) {
    gtk_layer_init_for_window(window);
    gtk_layer_set_namespace(window, "desktop");
    gtk_layer_set_layer(window, layer);
    for (const auto edge : edges) gtk_layer_set_anchor(window, edge, TRUE);
}

void setLayerMonitor(GtkWindow* window, int number) {
    const auto monitor = gdk_display_get_monitor(gdk_display_get_default(), number);
    // Setting it anew, were it the same, would take the surface away and bring it back.
    if (gtk_layer_get_monitor(window) != monitor) gtk_layer_set_monitor(window, monitor);
}

}  // namespace tessary::windows
