#include "desktop/windows/monitors.h"

#include <gdk/gdkx.h>
#include <utility>

namespace tessary::windows {

using namespace places;

namespace {

constexpr Monitor supposedMonitor{.area = {1280, 720}};

std::string textOf(const char* text) { return text ? text : ""; }

std::string connectorOf(GdkScreen* screen, int number) {
    // The one call that tells it, and by the display's own numbers.
    G_GNUC_BEGIN_IGNORE_DEPRECATIONS
    char* name = gdk_screen_get_monitor_plug_name(screen, number);
    G_GNUC_END_IGNORE_DEPRECATIONS
    std::string connector = textOf(name);
    g_free(name);
    return connector;
}

Monitor describeMonitor(GdkMonitor* monitor, int number) {
    GdkRectangle area{};
    gdk_monitor_get_workarea(monitor, &area);
    return {.name = MonitorName{textOf(gdk_monitor_get_manufacturer(monitor)),
                                textOf(gdk_monitor_get_model(monitor)),
                                connectorOf(gdk_screen_get_default(), number)},
            .origin = {area.x, area.y},
            .area = {area.width, area.height},
            .number = number};
}

/// Panels are known by a property of the root window.
GdkFilterReturn filterRoot(GdkXEvent* received, GdkEvent*, gpointer self) {
    const auto event = static_cast<const XEvent*>(received);
    if (event->type == PropertyNotify &&
        event->xproperty.atom == gdk_x11_get_xatom_by_name("_NET_WORKAREA"))
        (*static_cast<std::function<void()>*>(self))();
    return GDK_FILTER_CONTINUE;
}

}  // namespace

std::vector<Monitor> monitors() {
    const auto display = gdk_display_get_default();
    std::vector<Monitor> all;
    for (int i = 0; i < gdk_display_get_n_monitors(display); ++i) {
        const auto monitor = gdk_display_get_monitor(display, i);
        const auto at = gdk_monitor_is_primary(monitor) ? all.begin() : all.end();
        all.insert(at, describeMonitor(monitor, i));
    }
    return all.empty() ? std::vector{supposedMonitor} : all;
}

MonitorWatch::MonitorWatch(std::function<void()> changed) : changed_{std::move(changed)} {
    const auto display = gdk_display_get_default();
    const auto screen = gdk_display_get_default_screen(display);
    const auto on = [this](gpointer object, const char* signal) {
        connections_.emplace_back(object, signal, [this] { changed_(); });
    };
    on(display, "monitor-added");
    on(display, "monitor-removed");
    on(screen, "monitors-changed");
    on(screen, "size-changed");
    const auto root = gdk_screen_get_root_window(screen);
    if (!GDK_IS_X11_SCREEN(screen)) return;
    gdk_window_set_events(
        root, static_cast<GdkEventMask>(gdk_window_get_events(root) | GDK_PROPERTY_CHANGE_MASK));
    gdk_window_add_filter(root, filterRoot, &changed_);
}

MonitorWatch::~MonitorWatch() {
    const auto root = gdk_screen_get_root_window(gdk_screen_get_default());
    gdk_window_remove_filter(root, filterRoot, &changed_);
}

}  // namespace tessary::windows
