#include "desktop/dialogs/choice_list.h"

#include <algorithm>
#include <utility>

#include "desktop/glib/connect.h"

namespace tessary::dialogs {

using namespace client;
using namespace glib;

namespace {

constexpr std::ptrdiff_t mostRows = 200;  // more are found by their words

GtkWidget* ellipsized(const std::string& text, bool quiet) {
    const auto label = startLabel(text, quiet);
    gtk_label_set_ellipsize(GTK_LABEL(label), PANGO_ELLIPSIZE_END);
    gtk_widget_set_has_tooltip(label, TRUE);
    connect(label, "query-tooltip", [label](int, int, gboolean, GtkTooltip* tooltip) {
        gtk_tooltip_set_text(tooltip, gtk_label_get_text(GTK_LABEL(label)));
        return bool{pango_layout_is_ellipsized(gtk_label_get_layout(GTK_LABEL(label))) != FALSE};
    });
    return label;
}

GtkWidget* rowOf(const Pin& pin) {
    const auto lines = gtk_box_new(GTK_ORIENTATION_VERTICAL, 2);
    gtk_container_set_border_width(GTK_CONTAINER(lines), 8);
    gtk_container_add(GTK_CONTAINER(lines), ellipsized(pin.name, false));
    if (!pin.detail.empty()) gtk_container_add(GTK_CONTAINER(lines), ellipsized(pin.detail, true));
    const auto row = gtk_list_box_row_new();
    gtk_container_add(GTK_CONTAINER(row), lines);
    const auto accessible = gtk_widget_get_accessible(row);
    atk_object_set_name(accessible, shortened(pin.name).c_str());
    atk_object_set_description(accessible, shortened(pin.detail).c_str());
    return row;
}

}  // namespace

ChoiceList::ChoiceList(Click click, Events events) : events_{std::move(events)} {
    addEntry();
    addList();
    gtk_list_box_set_activate_on_single_click(list_, click == Click::chooses);
    connect(box_, "destroy", [this] { filling_ = true; });  // nobody selects any more
}

void ChoiceList::setName(const std::string& name) {
    atk_object_set_name(gtk_widget_get_accessible(GTK_WIDGET(list_)), shortened(name).c_str());
}

void ChoiceList::setWords(const std::string& ifNone, const std::string& ifNotFound) {
    ifNone_ = ifNone;
    ifNotFound_ = ifNotFound;
    showWords(0);
}

void ChoiceList::offer(std::vector<Pin> pins, PinSearch finder) {
    offered_ = std::move(pins);
    finder_ = std::move(finder);
    const auto window = gtk_widget_get_toplevel(box_);
    const auto focus = GTK_IS_WINDOW(window) ? gtk_window_get_focus(GTK_WINDOW(window)) : nullptr;
    const bool inList = focus && gtk_widget_is_ancestor(focus, GTK_WIDGET(list_));
    fill();
    if (inList) enterList();
}

std::optional<std::size_t> ChoiceList::selection() const {
    const auto row = gtk_list_box_get_selected_row(list_);
    if (!row) return std::nullopt;
    return rows_[static_cast<std::size_t>(gtk_list_box_row_get_index(row))];
}

std::optional<std::size_t> ChoiceList::chosen() {
    search();
    return selection();
}

void ChoiceList::addEntry() {
    gtk_entry_set_placeholder_text(entry_, "Search");
    atk_object_set_name(gtk_widget_get_accessible(GTK_WIDGET(entry_)), "Search");
    gtk_box_pack_start(GTK_BOX(box_), GTK_WIDGET(entry_), FALSE, TRUE, 0);
    connect(entry_, "search-changed", [this] { search(); });
    connect(entry_, "activate", [this] { events_.chosen(); });
    connect(entry_, "stop-search", [this] { events_.left(); });
    connect(entry_, "key-press-event", [this](GdkEventKey* event) {
        const bool down = event->keyval == GDK_KEY_Down || event->keyval == GDK_KEY_KP_Down;
        if (down) enterList();
        return down;
    });
}

void ChoiceList::addList() {
    gtk_widget_set_margin_top(placeholder_, 24);
    gtk_label_set_line_wrap(GTK_LABEL(placeholder_), TRUE);
    gtk_widget_show(placeholder_);
    gtk_list_box_set_placeholder(list_, placeholder_);
    gtk_widget_set_no_show_all(more_, TRUE);
    gtk_container_add(GTK_CONTAINER(scrolled_), GTK_WIDGET(list_));
    gtk_scrolled_window_set_policy(scrolled_, GTK_POLICY_NEVER, GTK_POLICY_AUTOMATIC);
    gtk_scrolled_window_set_shadow_type(scrolled_, GTK_SHADOW_IN);
    gtk_box_pack_start(GTK_BOX(box_), GTK_WIDGET(scrolled_), TRUE, TRUE, 0);
    gtk_box_pack_start(GTK_BOX(box_), more_, FALSE, TRUE, 0);
    connect(list_, "row-activated", [this] { events_.chosen(); });
    connect(list_, "row-selected", [this] {
        if (filling_) return;
        if (const auto place = selection()) wanted_ = offered_[*place].id;
        changed();
    });
    // Tab leaves the list, whose rows the arrows go through: there may be hundreds.
    connect(list_, "focus", [this](GtkDirectionType direction) {
        const bool tabs = direction == GTK_DIR_TAB_FORWARD || direction == GTK_DIR_TAB_BACKWARD;
        if (tabs && gtk_container_get_focus_child(GTK_CONTAINER(list_)))
            g_signal_stop_emission_by_name(list_, "focus");
        return false;
    });
    const auto placed = [this] {
        if (std::exchange(hidden_, false)) reveal();
    };
    connect(list_, "size-allocate", placed, When::afterOthers);
    // What the list has no use for is meant for the search.
    const auto typed = [this](GdkEvent* event) {
        if (!gtk_search_entry_handle_event(GTK_SEARCH_ENTRY(entry_), event)) return false;
        gtk_entry_grab_focus_without_selecting(entry_);
        return true;
    };
    connect(list_, "key-press-event", typed, When::afterOthers);
}

void ChoiceList::changed() const {
    if (events_.selected) events_.selected();
}

/// Shows what the entry's words find, if not done yet: they are looked up a moment after a key.
void ChoiceList::search() {
    if (words_ == gtk_entry_get_text(entry_)) return;
    fill();
    if (events_.typed) events_.typed(words_);
}

void ChoiceList::fill() {
    words_ = gtk_entry_get_text(entry_);
    filling_ = true;
    empty(GTK_WIDGET(list_));
    rows_ = finder_.matches(words_);
    const auto count = std::ssize(rows_);
    const auto place = arrangeRows();
    for (const auto row : rows_) gtk_container_add(GTK_CONTAINER(list_), rowOf(offered_[row]));
    gtk_widget_show_all(GTK_WIDGET(list_));
    if (place >= 0)
        gtk_list_box_select_row(list_,
                                gtk_list_box_get_row_at_index(list_, static_cast<int>(place)));
    hidden_ = true;
    filling_ = false;
    showWords(count - std::ssize(rows_));
    changed();
}

/// Keeps as many rows as are shown, and finds the one to select; -1 for none.
std::ptrdiff_t ChoiceList::arrangeRows() {
    const auto count = std::ssize(rows_);
    const auto isWanted = [this](std::size_t row) { return offered_[row].id == wanted_; };
    const auto it = std::ranges::find_if(rows_, isWanted);
    auto place = it - rows_.begin();
    if (it != rows_.end() && place >= mostRows) {
        std::rotate(rows_.begin(), it, it + 1);  // it is seen even where many come before it
        place = 0;
    }
    if (place == count) place = words_.empty() || count == 0 ? -1 : 0;
    rows_.resize(static_cast<std::size_t>(std::min(count, mostRows)));
    return place;
}

void ChoiceList::showWords(std::ptrdiff_t more) {
    const auto left = std::to_string(more) + " more, type to find them";
    gtk_label_set_text(GTK_LABEL(more_), left.c_str());
    gtk_widget_set_visible(more_, more > 0);
    gtk_label_set_text(GTK_LABEL(placeholder_), (offered_.empty() ? ifNone_ : ifNotFound_).c_str());
}

/// Scrolls to the selected row.
void ChoiceList::reveal() const {
    GdkRectangle place{};
    const auto row = gtk_list_box_get_selected_row(list_);
    if (!row) return;
    gtk_widget_get_allocation(GTK_WIDGET(row), &place);
    gtk_adjustment_clamp_page(gtk_scrolled_window_get_vadjustment(scrolled_), place.y,
                              place.y + place.height);
}

void ChoiceList::enterList() {
    search();
    auto row = gtk_list_box_get_selected_row(list_);
    if (!row) row = gtk_list_box_get_row_at_index(list_, 0);
    gtk_widget_grab_focus(row ? GTK_WIDGET(row) : GTK_WIDGET(entry_));
    if (row) gtk_list_box_select_row(list_, row);
}

}  // namespace tessary::dialogs
