#include "desktop/widget_window.h"

#include <algorithm>
#include <gtk-layer-shell.h>
#include <gtk/gtk.h>
#include <string_view>
#include <utility>
#ifdef GDK_WINDOWING_WAYLAND
#include <gdk/gdkwayland.h>
#endif

#include "desktop/glib_handles.h"
#include "desktop/note.h"

namespace tessary::desktop {

namespace {

constexpr int mostScale = 4;

struct DestroySurface {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
using Surface = std::unique_ptr<cairo_surface_t, DestroySurface>;

Surface decodePng(std::string_view bytes) {
    const auto read = [](void* closure, unsigned char* to, unsigned size) {
        auto& rest = *static_cast<std::string_view*>(closure);
        if (rest.size() < size) return CAIRO_STATUS_READ_ERROR;
        std::copy_n(rest.begin(), size, to);
        rest.remove_prefix(size);
        return CAIRO_STATUS_SUCCESS;
    };
    return Surface{cairo_image_surface_create_from_png_stream(read, &bytes)};
}

bool hasLayerShell() {
#ifdef GDK_WINDOWING_WAYLAND
    return GDK_IS_WAYLAND_DISPLAY(gdk_display_get_default()) && gtk_layer_is_supported();
#else
    return false;
#endif
}

GdkRectangle workRectangle() {
    const auto display = gdk_display_get_default();
    auto monitor = gdk_display_get_primary_monitor(display);
    if (!monitor) monitor = gdk_display_get_monitor(display, 0);
    GdkRectangle area{0, 0, 1280, 720};
    if (monitor) gdk_monitor_get_workarea(monitor, &area);
    return area;
}

void makeLayerSurface(GtkWindow* window) {
    gtk_layer_init_for_window(window);
    gtk_layer_set_namespace(window, "desktop");
    gtk_layer_set_layer(window, GTK_LAYER_SHELL_LAYER_BOTTOM);
    gtk_layer_set_anchor(window, GTK_LAYER_SHELL_EDGE_LEFT, TRUE);
    gtk_layer_set_anchor(window, GTK_LAYER_SHELL_EDGE_TOP, TRUE);
}

void makeDesktopWindow(GtkWindow* window) {
    gtk_window_set_type_hint(window, GDK_WINDOW_TYPE_HINT_DESKTOP);
    gtk_window_set_decorated(window, FALSE);
    gtk_window_set_skip_taskbar_hint(window, TRUE);
    gtk_window_set_skip_pager_hint(window, TRUE);
    gtk_window_set_accept_focus(window, FALSE);
    gtk_window_set_keep_below(window, TRUE);
    gtk_window_stick(window);
}

}  // namespace

bool openDisplay() {
    // Where nobody did before, GTK loads OpenGL on X11 only to list its visuals: 33 MB that
    // pictures have no use for. What a click starts shall have it, so the word is taken back.
    const bool ours = g_getenv("GDK_GL") == nullptr;
    if (ours) g_setenv("GDK_GL", "disable", TRUE);
    const bool opened = gtk_init_check(nullptr, nullptr);
    if (ours) g_unsetenv("GDK_GL");
    return opened;
}

Size workArea() {
    const auto area = workRectangle();
    return {area.width, area.height};
}

struct WidgetWindow::Parts {
    explicit Parts(Events theEvents) : events{std::move(theEvents)} {
        gtk_window_set_resizable(window, FALSE);
        gtk_widget_set_app_paintable(widget, TRUE);
        if (const auto visual = gdk_screen_get_rgba_visual(gtk_widget_get_screen(widget)))
            gtk_widget_set_visual(widget, visual);
        gtk_widget_add_events(widget, GDK_BUTTON_PRESS_MASK | GDK_BUTTON_RELEASE_MASK);
        layered ? makeLayerSurface(window) : makeDesktopWindow(window);
        connect();
    }
    ~Parts() {
        g_signal_handler_disconnect(gtk_widget_get_display(widget), screens);
        if (menu) g_object_unref(menu);
        gtk_widget_destroy(widget);
    }

    void connect() {
        const auto drawn = [](GtkWidget*, cairo_t* cairo, gpointer self) -> gboolean {
            static_cast<Parts*>(self)->draw(cairo);
            return TRUE;
        };
        const auto pressed = [](GtkWidget*, GdkEvent* event, gpointer self) -> gboolean {
            if (gdk_event_triggers_context_menu(event)) static_cast<Parts*>(self)->openMenu(event);
            return TRUE;
        };
        const auto released = [](GtkWidget*, GdkEventButton* event, gpointer self) -> gboolean {
            if (event->button == GDK_BUTTON_PRIMARY) static_cast<Parts*>(self)->open(event->time);
            return TRUE;
        };
        const auto rescaled = [](GObject*, GParamSpec*, gpointer self) {
            static_cast<Parts*>(self)->events.scaleChanged();
        };
        on("draw", +static_cast<gboolean (*)(GtkWidget*, cairo_t*, gpointer)>(drawn));
        on("button-press-event",
           +static_cast<gboolean (*)(GtkWidget*, GdkEvent*, gpointer)>(pressed));
        on("button-release-event",
           +static_cast<gboolean (*)(GtkWidget*, GdkEventButton*, gpointer)>(released));
        on("notify::scale-factor",
           +static_cast<void (*)(GObject*, GParamSpec*, gpointer)>(rescaled));
        // A widget goes by the menu or a command alone. But a layer surface is closed with its
        // screen, and comes back with the next.
        const auto closed = [](GtkWidget*, GdkEvent*, gpointer self) -> gboolean {
            if (const auto parts = static_cast<Parts*>(self); parts->layered)
                gtk_widget_hide(parts->widget);
            return TRUE;
        };
        on("delete-event", +static_cast<gboolean (*)(GtkWidget*, GdkEvent*, gpointer)>(closed));
        const auto screenCame = [](GdkDisplay*, GdkMonitor*, gpointer self) {
            if (const auto parts = static_cast<Parts*>(self); parts->entry.picture)
                gtk_widget_show(parts->widget);
        };
        screens = g_signal_connect(
            gtk_widget_get_display(widget), "monitor-added",
            G_CALLBACK(+static_cast<void (*)(GdkDisplay*, GdkMonitor*, gpointer)>(screenCame)),
            this);
    }
    template <class Callback>
    void on(const char* signal, Callback callback) {
        g_signal_connect(widget, signal, G_CALLBACK(callback), this);
    }

    /// Decodes the picture each time: a window is drawn rarely, and the pixels would be the most
    /// that a widget holds.
    void draw(cairo_t* cairo) const {
        cairo_set_operator(cairo, CAIRO_OPERATOR_SOURCE);
        cairo_set_source_rgba(cairo, 0, 0, 0, 0);
        cairo_paint(cairo);
        if (!entry.picture) return;
        const auto pixels = decodePng(*entry.picture);
        if (cairo_surface_status(pixels.get()) != CAIRO_STATUS_SUCCESS) return;
        const double perPoint =
            static_cast<double>(cairo_image_surface_get_height(pixels.get())) / size.height;
        cairo_surface_set_device_scale(pixels.get(), perPoint, perPoint);
        cairo_set_source_surface(cairo, pixels.get(), 0, 0);
        cairo_paint(cairo);
    }

    void open(guint32 time) {
        if (!entry.url) return;
        const Text scheme{g_uri_parse_scheme(entry.url->c_str())};
        const Object<GAppInfo> program{scheme ? g_app_info_get_default_for_uri_scheme(scheme.get())
                                              : nullptr};
        Fault fault;
        // Without a parent: on Wayland it would be exported, and a compositor ends whoever exports
        // a layer surface.
        if (!program)
            complain("no program is installed that opens " + *entry.url);
        else if (!gtk_show_uri_on_window(nullptr, entry.url->c_str(), time, fault.out()))
            complain(*entry.url + " cannot be opened: " + fault.message());
        else
            gtk_widget_set_tooltip_text(widget, nullptr);
    }
    void complain(const std::string& words) const {
        note(words);
        gtk_widget_set_tooltip_text(widget, words.c_str());
    }

    void openMenu(const GdkEvent* event) {
        if (menu) g_object_unref(menu);
        menu = GTK_WIDGET(g_object_ref_sink(gtk_menu_new()));
        gtk_menu_attach_to_widget(GTK_MENU(menu), widget, nullptr);
        const auto other = family == Family::small ? Family::medium : Family::small;
        addItem(other == Family::small ? "Small" : "Medium",
                [chosen = events.familyChosen, other] { chosen(other); });
        addItem("Remove Widget", events.removeChosen);
        addItem("Quit", events.quitChosen);
        gtk_widget_show_all(menu);
        gtk_menu_popup_at_pointer(GTK_MENU(menu), event);
    }
    void addItem(const char* label, std::function<void()> chosen) {
        using Chosen = std::function<void()>;
        const auto item = gtk_menu_item_new_with_label(label);
        // Later, as what is chosen may end this very window.
        const auto activated = [](GtkMenuItem*, gpointer data) {
            const auto later = [](gpointer call) -> gboolean {
                (*static_cast<Chosen*>(call))();
                return G_SOURCE_REMOVE;
            };
            g_idle_add_full(G_PRIORITY_DEFAULT, later, new Chosen{*static_cast<Chosen*>(data)},
                            [](gpointer call) { delete static_cast<Chosen*>(call); });
        };
        g_signal_connect_data(
            item, "activate", G_CALLBACK(+static_cast<void (*)(GtkMenuItem*, gpointer)>(activated)),
            new Chosen{std::move(chosen)},
            [](gpointer call, GClosure*) { delete static_cast<Chosen*>(call); },
            static_cast<GConnectFlags>(0));
        gtk_menu_shell_append(GTK_MENU_SHELL(menu), item);
    }

    Events events;
    GtkWidget* widget{gtk_window_new(GTK_WINDOW_TOPLEVEL)};
    GtkWindow* window{GTK_WINDOW(widget)};
    GtkWidget* menu{};
    gulong screens{};
    bool layered{hasLayerShell()};
    Entry entry{};
    Family family{};
    Size size{sizeOf(family)};
};

WidgetWindow::WidgetWindow(Events events) : parts_{std::make_unique<Parts>(std::move(events))} {}

WidgetWindow::~WidgetWindow() = default;

void WidgetWindow::place(Position position, Family family) {
    const auto window = parts_->window;
    parts_->family = family;
    parts_->size = sizeOf(family);
    gtk_widget_set_size_request(parts_->widget, parts_->size.width, parts_->size.height);
    if (parts_->layered) {
        gtk_layer_set_margin(window, GTK_LAYER_SHELL_EDGE_LEFT, position.x);
        gtk_layer_set_margin(window, GTK_LAYER_SHELL_EDGE_TOP, position.y);
    } else {
        const auto area = workRectangle();
        gtk_window_move(window, area.x + position.x, area.y + position.y);
    }
}

void WidgetWindow::setName(const std::string& name) {
    gtk_window_set_title(parts_->window, name.c_str());
    atk_object_set_name(gtk_widget_get_accessible(parts_->widget), name.c_str());
}

int WidgetWindow::scale() const {
    return std::clamp(gtk_widget_get_scale_factor(parts_->widget), 1, mostScale);
}

void WidgetWindow::show(const Entry& entry) {
    const auto before = std::exchange(parts_->entry, entry);
    if (before.text != entry.text)
        atk_object_set_description(gtk_widget_get_accessible(parts_->widget), entry.text.c_str());
    if (!before.picture) return gtk_widget_show(parts_->widget);
    if (*before.picture != *entry.picture) gtk_widget_queue_draw(parts_->widget);
}

}  // namespace tessary::desktop
