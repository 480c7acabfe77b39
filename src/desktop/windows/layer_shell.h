// Wayland's layer shell, by which a surface lies below or above all windows.
#pragma once

#include <gtk-layer-shell.h>
#include <gtk/gtk.h>
#include <initializer_list>

namespace tessary::windows {

/// Whether the open display is a Wayland compositor that has it.
bool hasLayerShell();

/// Turns a window that is not yet realized into a surface of a layer, held by these edges.
void makeLayerSurface(GtkWindow* window, GtkLayerShellLayer layer,
                      std::initializer_list<GtkLayerShellEdge> edges);

/// Moves it to the monitor that the display has under this number.
void setLayerMonitor(GtkWindow* window, int number);

}  // namespace tessary::windows
