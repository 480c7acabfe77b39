#include "desktop/windows/widget_window.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "desktop/glib/handles.h"
#include "desktop/glib/note.h"
#include "desktop/windows/layer_shell.h"
#include "desktop/windows/monitors.h"
#include "desktop/windows/picture.h"
#include "desktop/windows/widget_drag.h"

namespace tessary::windows {

using namespace glib;
using namespace places;
using namespace client;

namespace {

constexpr int mostScale = 4;
constexpr double cornerRadius = 22;  // of a card, in points

void makeDesktopWindow(GtkWindow* window) {
    gtk_window_set_type_hint(window, GDK_WINDOW_TYPE_HINT_DESKTOP);
    gtk_window_set_decorated(window, FALSE);
    gtk_window_set_skip_taskbar_hint(window, TRUE);
    gtk_window_set_skip_pager_hint(window, TRUE);
    gtk_window_set_focus_on_map(window, FALSE);
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

/// The outline of a card, so far within its edge.
void addCard(cairo_t* cairo, Size size, double inset) {
    const double radius = cornerRadius - inset;
    const double left = cornerRadius, right = size.width - left;
    const double top = cornerRadius, bottom = size.height - top;
    cairo_new_path(cairo);
    cairo_arc(cairo, right, top, radius, -G_PI / 2, 0);
    cairo_arc(cairo, right, bottom, radius, 0, G_PI / 2);
    cairo_arc(cairo, left, bottom, radius, G_PI / 2, G_PI);
    cairo_arc(cairo, left, top, radius, G_PI, 3 * G_PI / 2);
    cairo_close_path(cairo);
}

/// A signal's handler that calls a function of the object behind its last argument.
template <class Self, class Event, auto handle>
gboolean handled(GtkWidget*, Event* event, gpointer self) {
    (static_cast<Self*>(self)->*handle)(event);
    return TRUE;
}

struct WidgetWindow::Parts {
    explicit Parts(Events theEvents) : events{std::move(theEvents)} {
        gtk_window_set_resizable(window, FALSE);
        gtk_widget_set_app_paintable(widget, TRUE);
        if (const auto visual = gdk_screen_get_rgba_visual(gtk_widget_get_screen(widget)))
            gtk_widget_set_visual(widget, visual);
        gtk_widget_add_events(
            widget, GDK_BUTTON_PRESS_MASK | GDK_BUTTON_RELEASE_MASK | GDK_BUTTON1_MOTION_MASK);
        gtk_window_set_focus_visible(window, FALSE);
        if (layered) {
            makeLayerSurface(window, GTK_LAYER_SHELL_LAYER_BOTTOM, {});
            gtk_layer_set_keyboard_mode(window, GTK_LAYER_SHELL_KEYBOARD_MODE_ON_DEMAND);
        } else {
            makeDesktopWindow(window);
        }
        connect();
        connectScreen();
    }
    ~Parts() {
        g_signal_handlers_disconnect_by_data(gtk_widget_get_screen(widget), this);
        if (menu) gtk_menu_popdown(GTK_MENU(menu)), g_object_unref(menu);
        gtk_widget_destroy(widget);
    }
    Parts(const Parts&) = delete;
    Parts& operator=(const Parts&) = delete;

    void connect() {
        on("draw", handled<Parts, cairo_t, &Parts::draw>);
        on("button-press-event", handled<Parts, GdkEvent, &Parts::press>);
        on("motion-notify-event", handled<Parts, GdkEventMotion, &Parts::move>);
        on("button-release-event", handled<Parts, GdkEventButton, &Parts::release>);
        on("grab-broken-event", handled<Parts, GdkEventGrabBroken, &Parts::breakOff>);
        on("delete-event", handled<Parts, GdkEvent, &Parts::close>);
        const auto typed = [](GtkWidget*, GdkEventKey* event, gpointer self) -> gboolean {
            return static_cast<Parts*>(self)->type(event);
        };
        const auto menuKey = [](GtkWidget*, gpointer self) -> gboolean {
            static_cast<Parts*>(self)->openMenu(nullptr);
            return TRUE;
        };
        const auto rescaled = [](GObject*, GParamSpec*, gpointer self) {
            static_cast<Parts*>(self)->events.scaleChanged();
        };
        const auto focused = [](GObject*, GParamSpec*, gpointer self) {
            gtk_widget_queue_draw(static_cast<Parts*>(self)->widget);
        };
        on("key-press-event",
           +static_cast<gboolean (*)(GtkWidget*, GdkEventKey*, gpointer)>(typed));
        on("popup-menu", +static_cast<gboolean (*)(GtkWidget*, gpointer)>(menuKey));
        on("notify::scale-factor",
           +static_cast<void (*)(GObject*, GParamSpec*, gpointer)>(rescaled));
        for (const char* property : {"notify::has-toplevel-focus", "notify::focus-visible"})
            on(property, +static_cast<void (*)(GObject*, GParamSpec*, gpointer)>(focused));
    }
    void connectScreen() {
        const auto composited = [](gpointer self) { static_cast<Parts*>(self)->shape(); };
        g_signal_connect_swapped(gtk_widget_get_screen(widget), "composited-changed",
                                 G_CALLBACK(+static_cast<void (*)(gpointer)>(composited)), this);
    }
    template <class Callback>
    void on(const char* signal, Callback callback) {
        g_signal_connect(widget, signal, G_CALLBACK(callback), this);
    }

    void draw(cairo_t* cairo) const {
        cairo_set_operator(cairo, CAIRO_OPERATOR_SOURCE);
        cairo_set_source_rgba(cairo, 0, 0, 0, 0);
        cairo_paint(cairo);
        paint(cairo, entry.picture, sizeOf(family));
        if (gtk_window_has_toplevel_focus(window) && gtk_window_get_focus_visible(window))
            drawFocus(cairo);
    }
    /// A ring along the card's edge.
    void drawFocus(cairo_t* cairo) const {
        constexpr double line = 3;
        cairo_set_operator(cairo, CAIRO_OPERATOR_OVER);
        addCard(cairo, sizeOf(family), line / 2);
        cairo_set_source_rgb(cairo, 0.2, 0.5, 1);
        cairo_set_line_width(cairo, line);
        cairo_stroke(cairo);
    }
    /// Where nothing is seen through, the window itself gets the card's corners.
    void shape() const {
        if (gdk_screen_is_composited(gtk_widget_get_screen(widget)))
            return gtk_widget_shape_combine_region(widget, nullptr);
        const auto size = sizeOf(family);
        const Surface mask{cairo_image_surface_create(CAIRO_FORMAT_A1, size.width, size.height)};
        cairo_t* cairo = cairo_create(mask.get());
        addCard(cairo, size, 0);
        cairo_fill(cairo);
        cairo_destroy(cairo);
        cairo_region_t* region = gdk_cairo_region_create_from_surface(mask.get());
        gtk_widget_shape_combine_region(widget, region);
        cairo_region_destroy(region);
    }

    void press(GdkEvent* event) {
        if (gdk_event_triggers_context_menu(event)) return openMenu(event);
        const auto& button = event->button;
        if (button.type != GDK_BUTTON_PRESS || button.button != GDK_BUTTON_PRIMARY) return;
        gtk_window_set_focus_visible(window, FALSE);
        drag.emplace(Position{static_cast<int>(button.x_root), static_cast<int>(button.y_root)},
                     monitors(), corner(), sizeOf(family), entry.picture);
    }
    void move(GdkEventMotion* event) {
        if (!drag) return;
        drag->moveTo({static_cast<int>(event->x_root), static_cast<int>(event->y_root)});
        if (drag->place() && !drag->hasGrid()) goTo(*drag->place());
    }
    void release(GdkEventButton* event) {
        if (event->button != GDK_BUTTON_PRIMARY || !drag) return;
        const auto dropped = drag->place();
        drag.reset();
        dropped ? events.moved(*dropped) : open(event->time);
    }
    void breakOff(GdkEventGrabBroken*) { putBack(); }
    void putBack() {
        if (drag && drag->place() && !drag->hasGrid()) goTo(place);
        drag.reset();
    }

    /// A widget goes by the menu or a command alone. But a layer surface is closed with its
    /// monitor, which may be before or after the news of that.
    void close(GdkEvent*) const {
        if (!layered) return;
        gtk_widget_hide(widget);
        events.closed();
    }

    gboolean type(const GdkEventKey* event) {
        gtk_window_set_focus_visible(window, TRUE);
        switch (event->keyval) {
            case GDK_KEY_Return:
            case GDK_KEY_KP_Enter:
            case GDK_KEY_space: open(event->time); return TRUE;
            case GDK_KEY_Escape: putBack(); return TRUE;
            case GDK_KEY_Left: step(-gridStep, 0); return TRUE;
            case GDK_KEY_Right: step(gridStep, 0); return TRUE;
            case GDK_KEY_Up: step(0, -gridStep); return TRUE;
            case GDK_KEY_Down: step(0, gridStep); return TRUE;
            default: return FALSE;
        }
    }
    void step(int x, int y) const {
        const auto [left, top] = corner();
        events.moved(dropPlace({left + x, top + y}, sizeOf(family), monitors()));
    }

    /// The upper left, among all monitors.
    Position corner() const {
        const auto [x, y] = topLeft(place, sizeOf(family), monitor.area);
        return {monitor.origin.x + x, monitor.origin.y + y};
    }

    /// Puts the window to a place of a monitor that there is.
    void goTo(const Place& where) const {
        const auto all = monitors();
        const auto found = std::ranges::find(all, where.monitor, &Monitor::name);
        const auto& on = found == all.end() ? all.front() : *found;
        const auto [x, y] = topLeft(where, sizeOf(family), on.area);
        if (!layered) return gtk_window_move(window, on.origin.x + x, on.origin.y + y);
        setLayerMonitor(window, on.number);
        // By the edges that it is counted from, so that it keeps to them as panels come and go.
        const auto hold = [&](GtkLayerShellEdge start, GtkLayerShellEdge end, Offset offset) {
            const bool fromEnd = offset.from == From::end;
            gtk_layer_set_anchor(window, start, !fromEnd);
            gtk_layer_set_anchor(window, end, fromEnd);
            gtk_layer_set_margin(window, fromEnd ? end : start, offset.points);
        };
        hold(GTK_LAYER_SHELL_EDGE_LEFT, GTK_LAYER_SHELL_EDGE_RIGHT, where.x);
        hold(GTK_LAYER_SHELL_EDGE_TOP, GTK_LAYER_SHELL_EDGE_BOTTOM, where.y);
    }

    void appear() { gtk_widget_set_visible(widget, placed && entry.picture); }

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
        if (events.editChosen) addItem("Edit Widget…", events.editChosen);
        const auto other = family == Family::small ? Family::medium : Family::small;
        addItem(other == Family::small ? "Small" : "Medium",
                [chosen = events.familyChosen, other] { chosen(other); });
        addMonitors();
        addItem("Remove Widget", events.removeChosen);
        gtk_menu_shell_append(GTK_MENU_SHELL(menu), gtk_separator_menu_item_new());
        addItem("Add Widget…", events.addChosen);
        addItem("Quit", events.quitChosen);
        gtk_widget_show_all(menu);
        if (event) return gtk_menu_popup_at_pointer(GTK_MENU(menu), event);
        gtk_menu_popup_at_widget(GTK_MENU(menu), widget, GDK_GRAVITY_CENTER, GDK_GRAVITY_NORTH_WEST,
                                 nullptr);
    }
    /// The ways to the other monitors, which the arrow keys do not take.
    void addMonitors() {
        for (const auto& other : monitors()) {
            if (!other.name || other.name == monitor.name) continue;
            const auto& [maker, model, connector] = *other.name;
            Place there = place;
            there.monitor = other.name;
            addItem(("Move to " + (model.empty() ? connector : model)).c_str(),
                    [moved = events.moved, there] { moved(there); });
        }
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
    bool layered{hasLayerShell()};
    Entry entry{};
    Family family{};
    Place place{};
    Monitor monitor{};
    bool placed{};  ///< and its monitor is there
    std::optional<WidgetDrag> drag{};
};

WidgetWindow::WidgetWindow(Events events) : parts_{std::make_unique<Parts>(std::move(events))} {}

WidgetWindow::~WidgetWindow() = default;

void WidgetWindow::place(const Monitor& monitor, const Place& place, Family family) {
    auto& parts = *parts_;
    const auto [width, height] = sizeOf(parts.family = family);
    gtk_widget_set_size_request(parts.widget, width, height);
    parts.shape();
    parts.monitor = monitor;
    parts.place = place;
    parts.place.monitor = monitor.name;
    parts.placed = true;
    parts.goTo(parts.place);
    parts.appear();
}

void WidgetWindow::leave() {
    parts_->placed = false;
    parts_->appear();
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
    if (!before.picture) return parts_->appear();
    if (*before.picture != *entry.picture) gtk_widget_queue_draw(parts_->widget);
}

void WidgetWindow::openLink() { parts_->open(GDK_CURRENT_TIME); }

}  // namespace tessary::windows
