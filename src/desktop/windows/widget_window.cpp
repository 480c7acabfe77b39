#include "desktop/windows/widget_window.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "desktop/glib/connect.h"
#include "desktop/glib/handles.h"
#include "desktop/glib/note.h"
#include "desktop/glib/timer.h"
#include "desktop/windows/card_menu.h"
#include "desktop/windows/host.h"
#include "desktop/windows/layer_shell.h"
#include "desktop/windows/monitors.h"
#include "desktop/windows/picture.h"
#include "desktop/windows/widget_drag.h"
#include "platform/foundation/visible_text.h"

namespace tessary::windows {

using namespace glib;
using namespace places;
using namespace client;
using foundation::Result;
using foundation::visible;

namespace {

constexpr std::chrono::milliseconds monitorsSettle{100};
constexpr double cornerRadius = 22;  // of a card, in points
constexpr int margin = 16;           // of words on a card
constexpr double dimmed = 0.4;
constexpr std::size_t mostSpoken = 10'000;

void makeDesktopWindow(GtkWindow* window) {
    gtk_window_set_type_hint(window, GDK_WINDOW_TYPE_HINT_DESKTOP);
    gtk_window_set_decorated(window, FALSE);
    gtk_window_set_skip_taskbar_hint(window, TRUE);
    gtk_window_set_skip_pager_hint(window, TRUE);
    gtk_window_set_focus_on_map(window, FALSE);
    gtk_window_set_keep_below(window, TRUE);
    gtk_window_stick(window);
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

class WidgetWindow final : public Card {
public:
    explicit WidgetWindow(Events events) : events_{std::move(events)} {
        gtk_window_set_resizable(window_, FALSE);
        makeSeeThrough(widget_);
        gtk_widget_add_events(
            widget_, GDK_BUTTON_PRESS_MASK | GDK_BUTTON_RELEASE_MASK | GDK_BUTTON1_MOTION_MASK);
        gtk_window_set_focus_visible(window_, FALSE);
        if (layered_) {
            makeLayerSurface(window_, GTK_LAYER_SHELL_LAYER_BOTTOM, {});
            gtk_layer_set_keyboard_mode(window_, GTK_LAYER_SHELL_KEYBOARD_MODE_ON_DEMAND);
        } else {
            makeDesktopWindow(window_);
        }
        connectPointer();
        connectRest();
    }
    WidgetWindow(const WidgetWindow&) = delete;
    WidgetWindow& operator=(const WidgetWindow&) = delete;
    ~WidgetWindow() override {
        if (menu_) gtk_menu_popdown(GTK_MENU(menu_.get()));
        gtk_widget_destroy(widget_);
    }

    void place(const Monitor& monitor, const Place& place, const Family& family) override {
        family_ = family;
        const auto [width, height] = family_.size;
        gtk_widget_set_size_request(widget_, width, height);
        shape();
        monitor_ = monitor;
        place_ = place;
        place_.monitor = monitor_.name;
        placed_ = true;
        goTo(place_);
        appear();
    }

    void leave() override {
        placed_ = false;
        appear();
    }

    void setKind(const Kind& kind) override {
        kind_ = kind;
        const auto name = visible(kind.displayName);
        gtk_window_set_title(window_, name.c_str());
        atk_object_set_name(gtk_widget_get_accessible(widget_), name.c_str());
    }

    int scale() const override { return scaleOf(widget_); }

    void show(const Entry& next) override {
        const auto before = std::exchange(entry_, next);
        if (before.text != entry_.text) describe();
        if (!before.picture) appear();
        if (!before.picture || *before.picture != *entry_.picture) gtk_widget_queue_draw(widget_);
    }

    void setTrouble(const std::string& why) override {
        if (std::exchange(trouble_, why) == why) return;
        describe();
        showTooltip();
        appear();
        gtk_widget_queue_draw(widget_);
    }

    Result<void> openLink() override { return open(GDK_CURRENT_TIME); }

private:
    void connectPointer() {
        connect(widget_, "button-press-event",
                [this](GdkEvent* event) { return press(event), true; });
        connect(widget_, "motion-notify-event",
                [this](GdkEventMotion* event) { return move(*event), true; });
        connect(widget_, "button-release-event",
                [this](GdkEventButton* event) { return release(*event), true; });
        connect(widget_, "grab-broken-event", [this] { return putBack(), true; });
    }
    void connectRest() {
        connect(widget_, "draw", [this](cairo_t* cairo) { return draw(cairo), true; });
        connect(widget_, "delete-event", [this] { return close(), true; });
        connect(widget_, "popup-menu", [this] { return openMenu(nullptr), true; });
        connect(widget_, "key-press-event", [this](GdkEventKey* event) { return type(*event); });
        connect(widget_, "notify::scale-factor", [this] { events_.scaleChanged(); });
        for (const char* property : {"notify::has-toplevel-focus", "notify::focus-visible"})
            connect(widget_, property, [this] { gtk_widget_queue_draw(widget_); });
    }

    void draw(cairo_t* cairo) const {
        clear(cairo);
        if (!paint(cairo, entry_.picture, family_.size, trouble_.empty() ? 1 : dimmed))
            drawWords(cairo, trouble_.empty() ? "The picture is damaged" : trouble_);
        if (gtk_window_has_toplevel_focus(window_) && gtk_window_get_focus_visible(window_))
            drawFocus(cairo);
    }
    /// Where there is no picture: a card with what there is to say.
    void drawWords(cairo_t* cairo, const std::string& words) const {
        addCard(cairo, family_.size, 0);
        cairo_set_source_rgb(cairo, 0.2, 0.2, 0.2);
        cairo_fill(cairo);
        const Object<PangoLayout> layout{
            gtk_widget_create_pango_layout(widget_, visible(words).c_str())};
        pango_layout_set_width(layout.get(), (family_.size.width - 2 * margin) * PANGO_SCALE);
        pango_layout_set_height(layout.get(), (family_.size.height - 2 * margin) * PANGO_SCALE);
        pango_layout_set_ellipsize(layout.get(), PANGO_ELLIPSIZE_END);
        cairo_set_source_rgb(cairo, 0.8, 0.8, 0.8);
        cairo_move_to(cairo, margin, margin);
        pango_cairo_show_layout(cairo, layout.get());
    }
    /// A ring along the card's edge.
    void drawFocus(cairo_t* cairo) const {
        constexpr double line = 3;
        addCard(cairo, family_.size, line / 2);
        cairo_set_source_rgb(cairo, 0.2, 0.5, 1);
        cairo_set_line_width(cairo, line);
        cairo_stroke(cairo);
    }
    /// Where nothing is seen through, the window itself gets the card's corners.
    void shape() const {
        if (gdk_screen_is_composited(gtk_widget_get_screen(widget_)))
            return gtk_widget_shape_combine_region(widget_, nullptr);
        const auto size = family_.size;
        const Surface mask{cairo_image_surface_create(CAIRO_FORMAT_A1, size.width, size.height)};
        cairo_t* cairo = cairo_create(mask.get());
        addCard(cairo, size, 0);
        cairo_fill(cairo);
        cairo_destroy(cairo);
        cairo_region_t* region = gdk_cairo_region_create_from_surface(mask.get());
        gtk_widget_shape_combine_region(widget_, region);
        cairo_region_destroy(region);
    }

    void press(GdkEvent* event) {
        if (gdk_event_triggers_context_menu(event)) return openMenu(event);
        const auto& button = event->button;
        if (button.type != GDK_BUTTON_PRESS || button.button != GDK_BUTTON_PRIMARY) return;
        gtk_window_set_focus_visible(window_, FALSE);
        drag_.emplace(Position{static_cast<int>(button.x_root), static_cast<int>(button.y_root)},
                      monitors(), corner(), family_.size, entry_.picture);
    }
    void move(const GdkEventMotion& event) {
        if (!drag_) return;
        drag_->moveTo({static_cast<int>(event.x_root), static_cast<int>(event.y_root)});
        if (drag_->place() && !drag_->hasGrid()) goTo(*drag_->place());
    }
    void release(const GdkEventButton& event) {
        if (event.button != GDK_BUTTON_PRIMARY || !drag_) return;
        const auto dropped = drag_->place();
        drag_.reset();
        dropped ? events_.moved(*dropped) : click(event.time);
    }
    void putBack() {
        if (drag_ && drag_->place() && !drag_->hasGrid()) goTo(place_);
        drag_.reset();
    }

    /// A widget goes by the menu or a command alone. But a layer surface is closed with its
    /// monitor, which may be before or after the news of that.
    void close() {
        if (!layered_) return;
        gtk_widget_hide(widget_);
        closing_.start(monitorsSettle, events_.closed);
    }

    bool type(const GdkEventKey& event) {
        gtk_window_set_focus_visible(window_, TRUE);
        switch (event.keyval) {
            case GDK_KEY_Return:
            case GDK_KEY_KP_Enter:
            case GDK_KEY_space: click(event.time); return true;
            case GDK_KEY_Escape: putBack(); return true;
            case GDK_KEY_Left: step(-gridStep, 0); return true;
            case GDK_KEY_Right: step(gridStep, 0); return true;
            case GDK_KEY_Up: step(0, -gridStep); return true;
            case GDK_KEY_Down: step(0, gridStep); return true;
            default: return false;
        }
    }
    void step(int x, int y) const {
        const auto [left, top] = corner();
        events_.moved(dropPlace({left + x, top + y}, family_.size, monitors()));
    }

    /// The upper left, among all monitors.
    Position corner() const {
        const auto [x, y] = topLeft(place_, family_.size, monitor_.area);
        return {monitor_.origin.x + x, monitor_.origin.y + y};
    }

    /// Puts the window to a place of a monitor that there is.
    void goTo(const Place& where) const {
        const auto all = monitors();
        const auto found = std::ranges::find(all, where.monitor, &Monitor::name);
        const auto& on = found == all.end() ? all.front() : *found;
        const auto [x, y] = topLeft(where, family_.size, on.area);
        if (!layered_) return gtk_window_move(window_, on.origin.x + x, on.origin.y + y);
        setLayerMonitor(window_, on.number);
        // By the edges that it is counted from, so that it keeps to them as panels come and go.
        const auto hold = [&](GtkLayerShellEdge start, GtkLayerShellEdge end, Offset offset) {
            const bool fromEnd = offset.from == From::end;
            gtk_layer_set_anchor(window_, start, !fromEnd);
            gtk_layer_set_anchor(window_, end, fromEnd);
            gtk_layer_set_margin(window_, fromEnd ? end : start, offset.points);
        };
        hold(GTK_LAYER_SHELL_EDGE_LEFT, GTK_LAYER_SHELL_EDGE_RIGHT, where.x);
        hold(GTK_LAYER_SHELL_EDGE_TOP, GTK_LAYER_SHELL_EDGE_BOTTOM, where.y);
    }

    void appear() {
        gtk_widget_set_visible(widget_, placed_ && (entry_.picture || !trouble_.empty()));
    }

    /// For a screen reader.
    void describe() const {
        const auto words = trouble_.empty() ? entry_.text : trouble_ + "\n" + entry_.text;
        const auto size = static_cast<gssize>(std::min(words.size(), mostSpoken));
        const Text text{g_utf8_make_valid(words.c_str(), size)};
        atk_object_set_description(gtk_widget_get_accessible(widget_), text.get());
    }

    void click(guint32 time) {
        events_.clicked();
        if (const auto opened = open(time); !opened) note(opened.fault().message());
    }
    Result<void> open(guint32 time) {
        auto opened = openHost(entry_.url, time);
        complaint_ = opened ? "" : opened.fault().message();
        showTooltip();
        return opened;
    }
    void showTooltip() const {
        const auto words = visible(complaint_.empty() ? trouble_ : complaint_);
        gtk_widget_set_tooltip_text(widget_, words.empty() ? nullptr : words.c_str());
    }

    void openMenu(const GdkEvent* event) {
        menu_.reset(GTK_WIDGET(g_object_ref_sink(gtk_menu_new())));
        gtk_menu_attach_to_widget(GTK_MENU(menu_.get()), widget_, nullptr);
        for (const auto& [label, chosen] : cardMenu(events_, kind_, family_, place_, monitors())) {
            const auto item = label.empty() ? gtk_separator_menu_item_new()
                                            : gtk_menu_item_new_with_label(label.c_str());
            connect(item, "activate", [this, chosen = chosen] { choosing_.start({}, chosen); });
            gtk_menu_shell_append(GTK_MENU_SHELL(menu_.get()), item);
        }
        gtk_widget_show_all(menu_.get());
        if (event) return gtk_menu_popup_at_pointer(GTK_MENU(menu_.get()), event);
        gtk_menu_popup_at_widget(GTK_MENU(menu_.get()), widget_, GDK_GRAVITY_CENTER,
                                 GDK_GRAVITY_NORTH_WEST, nullptr);
    }

    Events events_;
    GtkWidget* widget_{gtk_window_new(GTK_WINDOW_TOPLEVEL)};
    GtkWindow* window_{GTK_WINDOW(widget_)};
    Object<GtkWidget> menu_{};
    Timer choosing_{};  ///< what is chosen may end this very window, so it is done a moment later
    Timer closing_{};
    bool layered_{hasLayerShell()};
    Entry entry_{};
    std::string trouble_{};    ///< why it could not be brought up to date
    std::string complaint_{};  ///< why the last click opened nothing
    Kind kind_{};
    Family family_{};
    Place place_{};
    Monitor monitor_{};
    bool placed_{};  ///< and its monitor is there
    std::optional<WidgetDrag> drag_{};
    Connection composited_{gtk_widget_get_screen(widget_), "composited-changed",
                           [this] { shape(); }};
};

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

std::unique_ptr<Card> openWidgetWindow(Card::Events events) {
    return std::make_unique<WidgetWindow>(std::move(events));
}

}  // namespace tessary::windows
