#include "desktop/dialogs/editor.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "desktop/client/inquiry.h"
#include "desktop/dialogs/dialog_window.h"
#include "desktop/dialogs/pin_search.h"

namespace tessary::dialogs {

using namespace places;
using namespace client;

namespace {

constexpr Size editorSize{420, 520};
constexpr std::ptrdiff_t mostRows = 200;  // more are found by their words

GtkWidget* ellipsized(const std::string& text, bool quiet) {
    const auto label = startLabel(text, quiet);
    gtk_label_set_ellipsize(GTK_LABEL(label), PANGO_ELLIPSIZE_END);
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

struct Editor::Parts {
    Parts(Extension& extension, std::string theKind, std::optional<std::string> thePin,
          Events theEvents)
        : kind{std::move(theKind)},
          pin{std::move(thePin)},
          events{std::move(theEvents)},
          wanted{pin},
          inquiry{extension, [this] { ask(); }},
          dialog{editorSize, events.closed} {
        dialog.setTitle("Choose");
        addSearch();
        addList();
        addButtons();
        dialog.setStatus("One moment…");
        inquiry.start();
    }
    ~Parts() { filling = true; }

    template <class Callback>
    void on(gpointer sender, const char* signal, Callback callback) {
        g_signal_connect(sender, signal, G_CALLBACK(+callback), this);
    }

    void addSearch() {
        gtk_entry_set_placeholder_text(entry, "Search");
        atk_object_set_name(gtk_widget_get_accessible(GTK_WIDGET(entry)), "Search");
        dialog.add(GTK_WIDGET(entry), false);
        on(entry, "search-changed",
           [](GtkSearchEntry*, gpointer self) { static_cast<Parts*>(self)->search(); });
        on(entry, "activate",
           [](GtkEntry*, gpointer self) { static_cast<Parts*>(self)->choose(); });
        on(entry, "stop-search",
           [](GtkSearchEntry*, gpointer self) { static_cast<Parts*>(self)->dialog.close(); });
        on(entry, "key-press-event", [](GtkWidget*, GdkEventKey* event, gpointer self) -> gboolean {
            if (event->keyval != GDK_KEY_Down && event->keyval != GDK_KEY_KP_Down) return FALSE;
            static_cast<Parts*>(self)->enterList();
            return TRUE;
        });
    }

    void addList() {
        gtk_list_box_set_activate_on_single_click(list, FALSE);
        gtk_widget_set_margin_top(placeholder, 24);
        gtk_label_set_line_wrap(GTK_LABEL(placeholder), TRUE);
        gtk_widget_show(placeholder);
        gtk_list_box_set_placeholder(list, placeholder);
        gtk_widget_set_no_show_all(more, TRUE);
        gtk_container_add(GTK_CONTAINER(scrolled), GTK_WIDGET(list));
        gtk_scrolled_window_set_policy(scrolled, GTK_POLICY_NEVER, GTK_POLICY_AUTOMATIC);
        gtk_scrolled_window_set_shadow_type(scrolled, GTK_SHADOW_IN);
        dialog.add(GTK_WIDGET(scrolled), true);
        dialog.add(more, false);
        on(list, "row-activated",
           [](GtkListBox*, GtkListBoxRow*, gpointer self) { static_cast<Parts*>(self)->choose(); });
        on(list, "row-selected", [](GtkListBox*, GtkListBoxRow*, gpointer self) {
            if (const auto parts = static_cast<Parts*>(self); !parts->filling) parts->selected();
        });
        const auto placed = [](GtkWidget*, GdkRectangle*, gpointer self) {
            if (const auto parts = static_cast<Parts*>(self); std::exchange(parts->hidden, false))
                parts->reveal();
        };
        g_signal_connect_after(list, "size-allocate", G_CALLBACK(+placed), this);
        // What the list has no use for is meant for the search.
        const auto typed = [](GtkWidget*, GdkEvent* event, gpointer self) -> gboolean {
            const auto to = static_cast<Parts*>(self)->entry;
            if (!gtk_search_entry_handle_event(GTK_SEARCH_ENTRY(to), event)) return FALSE;
            gtk_entry_grab_focus_without_selecting(to);
            return TRUE;
        };
        g_signal_connect_after(list, "key-press-event", G_CALLBACK(+typed), this);
    }

    void addButtons() {
        const auto row = gtk_box_new(GTK_ORIENTATION_HORIZONTAL, 6);
        const auto cancel = gtk_button_new_with_mnemonic("_Cancel");
        gtk_style_context_add_class(gtk_widget_get_style_context(button), "suggested-action");
        gtk_widget_set_sensitive(button, FALSE);
        gtk_box_pack_end(GTK_BOX(row), button, FALSE, FALSE, 0);
        gtk_box_pack_end(GTK_BOX(row), cancel, FALSE, FALSE, 0);
        dialog.add(row, false);
        on(button, "clicked",
           [](GtkButton*, gpointer self) { static_cast<Parts*>(self)->choose(); });
        on(cancel, "clicked",
           [](GtkButton*, gpointer self) { static_cast<Parts*>(self)->dialog.close(); });
    }

    void ask() {
        inquiry.ask({.request = "pins", .widget = kind}, [this](const Reply& reply) {
            if (!reply.pins)
                return dialog.setStatus(reply.error.value_or("the extension answers without pins"));
            const auto& offered = reply.pins->pins;
            if (!pin || std::ranges::find(offered, *pin, &Pin::id) != offered.end())
                return take(*reply.pins);
            const auto named = [this, pins = *reply.pins](const Reply& gone) mutable {
                if (gone.pins)
                    pins.pins.insert(pins.pins.begin(), gone.pins->pins.begin(),
                                     gone.pins->pins.end());
                take(pins);
            };
            inquiry.ask({.request = "pins", .widget = kind, .ids = {*pin}}, named);
        });
    }

    void take(const Pins& pins) {
        dialog.setStatus("");
        if (std::exchange(answered, true) && pins == found) return;
        found = pins;
        finder = PinSearch{found.pins};
        dialog.setTitle("Choose a " + found.type);
        atk_object_set_name(gtk_widget_get_accessible(GTK_WIDGET(list)),
                            shortened(found.type).c_str());
        if (!wanted && found.initial) wanted = found.initial->id;
        const auto focus = gtk_window_get_focus(GTK_WINDOW(dialog.widget()));
        const bool inList = focus && gtk_widget_is_ancestor(focus, GTK_WIDGET(list));
        fill();
        if (inList) enterList();
    }

    /// Shows what the entry's words find, if not done yet: they are looked up a moment after a key.
    void search() {
        if (words != gtk_entry_get_text(entry)) fill();
    }

    void fill() {
        words = gtk_entry_get_text(entry);
        filling = true;
        gtk_container_foreach(
            GTK_CONTAINER(list), [](GtkWidget* widget, gpointer) { gtk_widget_destroy(widget); },
            nullptr);
        rows = finder.matches(words);
        const auto isWanted = [this](std::size_t row) { return found.pins[row].id == wanted; };
        const auto it = std::ranges::find_if(rows, isWanted);
        auto place = it - rows.begin();
        if (it != rows.end() && place >= mostRows) {
            std::rotate(rows.begin(), it, it + 1);  // it is seen even where many come before it
            place = 0;
        }
        const auto count = std::ssize(rows);
        if (place == count) place = words.empty() || count == 0 ? -1 : 0;
        rows.resize(static_cast<std::size_t>(std::min(count, mostRows)));
        for (const auto row : rows) gtk_container_add(GTK_CONTAINER(list), rowOf(found.pins[row]));
        gtk_widget_show_all(GTK_WIDGET(list));
        if (place >= 0)
            gtk_list_box_select_row(list,
                                    gtk_list_box_get_row_at_index(list, static_cast<int>(place)));
        hidden = true;
        filling = false;
        const auto left = std::to_string(count - std::ssize(rows)) + " more, type to find them";
        gtk_label_set_text(GTK_LABEL(more), left.c_str());
        gtk_widget_set_visible(more, count > mostRows);
        gtk_label_set_text(GTK_LABEL(placeholder), !answered ? ""
                                                   : found.pins.empty()
                                                       ? "There is nothing pinned to choose from."
                                                       : "No pin has these words.");
        gtk_widget_set_sensitive(button, place >= 0);
    }

    const Pin* selection() const {
        const auto row = gtk_list_box_get_selected_row(list);
        return row ? &found.pins[rows[static_cast<std::size_t>(gtk_list_box_row_get_index(row))]]
                   : nullptr;
    }

    /// The user has selected a row.
    void selected() {
        const auto chosen = selection();
        gtk_widget_set_sensitive(button, chosen != nullptr);
        if (chosen) wanted = chosen->id;
    }

    /// Scrolls to the selected row.
    void reveal() const {
        GdkRectangle place{};
        const auto row = gtk_list_box_get_selected_row(list);
        if (!row) return;
        gtk_widget_get_allocation(GTK_WIDGET(row), &place);
        gtk_adjustment_clamp_page(gtk_scrolled_window_get_vadjustment(scrolled), place.y,
                                  place.y + place.height);
    }

    void enterList() {
        search();
        auto row = gtk_list_box_get_selected_row(list);
        if (!row) row = gtk_list_box_get_row_at_index(list, 0);
        gtk_widget_grab_focus(row ? GTK_WIDGET(row) : GTK_WIDGET(entry));
        if (row) gtk_list_box_select_row(list, row);
    }

    void choose() {
        search();
        const auto chosen = selection();
        if (!chosen) return;
        dialog.close();
        events.chosen(chosen->id);
    }

    std::string kind;
    std::optional<std::string> pin;
    Events events;
    GtkEntry* entry{GTK_ENTRY(gtk_search_entry_new())};
    GtkListBox* list{GTK_LIST_BOX(gtk_list_box_new())};
    GtkScrolledWindow* scrolled{GTK_SCROLLED_WINDOW(gtk_scrolled_window_new(nullptr, nullptr))};
    GtkWidget* placeholder{gtk_label_new(nullptr)};
    GtkWidget* more{startLabel("", true)};
    GtkWidget* button{gtk_button_new_with_mnemonic("C_hoose")};
    bool answered{}, filling{};
    bool hidden{};  ///< the selected row may be out of sight, as rows have come
    Pins found{};
    PinSearch finder{{}};
    std::string words{};                ///< that have found the rows
    std::vector<std::size_t> rows{};    ///< the pins that are shown
    std::optional<std::string> wanted;  ///< the identifier to select wherever it is among the rows
    Inquiry inquiry;
    DialogWindow dialog;  ///< the first to go, as its widgets tell the rest
};

Editor::Editor(Extension& extension, std::string kind, std::optional<std::string> pin,
               Events events)
    : parts_{
          std::make_unique<Parts>(extension, std::move(kind), std::move(pin), std::move(events))} {}

Editor::~Editor() = default;

void Editor::present() { parts_->dialog.present(); }

void Editor::reload() { parts_->inquiry.start(); }

}  // namespace tessary::dialogs
