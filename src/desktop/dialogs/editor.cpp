#include "desktop/dialogs/editor.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "desktop/client/inquiry.h"
#include "desktop/dialogs/dialog_window.h"
#include "desktop/dialogs/pin_search.h"
#include "desktop/glib/connect.h"

namespace tessary::dialogs {

using namespace places;
using namespace client;
using namespace glib;

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

class Editor final : public Dialog {
public:
    Editor(Extension& extension, std::string kind, std::optional<std::string> pin,
           EditorEvents events)
        : kind_{std::move(kind)},
          pin_{std::move(pin)},
          events_{std::move(events)},
          wanted_{pin_},
          inquiry_{extension, [this] { ask(); }},
          dialog_{editorSize, events_.closed} {
        dialog_.setTitle("Choose");
        addSearch();
        addList();
        addButtons();
        dialog_.setStatus("One moment…");
        inquiry_.start();
    }
    Editor(const Editor&) = delete;
    Editor& operator=(const Editor&) = delete;
    ~Editor() override { filling_ = true; }

    void present() override { dialog_.present(); }
    void reload() override { inquiry_.start(); }
    void setTrouble(const std::string& why) override { dialog_.setTrouble(why); }

private:
    void addSearch() {
        gtk_entry_set_placeholder_text(entry_, "Search");
        atk_object_set_name(gtk_widget_get_accessible(GTK_WIDGET(entry_)), "Search");
        dialog_.add(GTK_WIDGET(entry_), false);
        connect(entry_, "search-changed", [this] { search(); });
        connect(entry_, "activate", [this] { choose(); });
        connect(entry_, "stop-search", [this] { dialog_.close(); });
        connect(entry_, "key-press-event", [this](GdkEventKey* event) {
            const bool down = event->keyval == GDK_KEY_Down || event->keyval == GDK_KEY_KP_Down;
            if (down) enterList();
            return down;
        });
    }

    void addList() {
        gtk_list_box_set_activate_on_single_click(list_, FALSE);
        gtk_widget_set_margin_top(placeholder_, 24);
        gtk_label_set_line_wrap(GTK_LABEL(placeholder_), TRUE);
        gtk_widget_show(placeholder_);
        gtk_list_box_set_placeholder(list_, placeholder_);
        gtk_widget_set_no_show_all(more_, TRUE);
        gtk_container_add(GTK_CONTAINER(scrolled_), GTK_WIDGET(list_));
        gtk_scrolled_window_set_policy(scrolled_, GTK_POLICY_NEVER, GTK_POLICY_AUTOMATIC);
        gtk_scrolled_window_set_shadow_type(scrolled_, GTK_SHADOW_IN);
        dialog_.add(GTK_WIDGET(scrolled_), true);
        dialog_.add(more_, false);
        connect(list_, "row-activated", [this] { choose(); });
        connect(list_, "row-selected", [this] {
            if (!filling_) selected();
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

    void addButtons() {
        const auto row = gtk_box_new(GTK_ORIENTATION_HORIZONTAL, 6);
        const auto cancel = gtk_button_new_with_mnemonic("_Cancel");
        gtk_style_context_add_class(gtk_widget_get_style_context(button_), "suggested-action");
        gtk_widget_set_sensitive(button_, FALSE);
        gtk_box_pack_end(GTK_BOX(row), button_, FALSE, FALSE, 0);
        gtk_box_pack_end(GTK_BOX(row), cancel, FALSE, FALSE, 0);
        dialog_.add(row, false);
        connect(button_, "clicked", [this] { choose(); });
        connect(cancel, "clicked", [this] { dialog_.close(); });
    }

    void ask() {
        inquiry_.ask({.request = "pins", .widget = kind_}, [this](const Reply& reply) {
            if (!reply.pins)
                return dialog_.setStatus(
                    reply.error.value_or("the extension answers without pins"));
            const auto& offered = reply.pins->suggested;
            if (!pin_ || std::ranges::find(offered, *pin_, &Pin::id) != offered.end())
                return take(*reply.pins);
            const auto named = [this, pins = *reply.pins](const Reply& gone) mutable {
                if (gone.pins)
                    pins.suggested.insert(pins.suggested.begin(), gone.pins->suggested.begin(),
                                          gone.pins->suggested.end());
                take(pins);
            };
            inquiry_.ask({.request = "pins", .widget = kind_, .ids = {{*pin_}}}, named);
        });
    }

    void take(const protocol::Suggestions& pins) {
        dialog_.setStatus("");
        if (std::exchange(answered_, true) && pins == found_) return;
        found_ = pins;
        finder_ = PinSearch{found_.suggested};
        dialog_.setTitle("Choose a " + found_.type);
        atk_object_set_name(gtk_widget_get_accessible(GTK_WIDGET(list_)),
                            shortened(found_.type).c_str());
        if (!wanted_ && found_.initial) wanted_ = found_.initial->id;
        const auto focus = gtk_window_get_focus(GTK_WINDOW(dialog_.widget()));
        const bool inList = focus && gtk_widget_is_ancestor(focus, GTK_WIDGET(list_));
        fill();
        if (inList) enterList();
    }

    /// Shows what the entry's words find, if not done yet: they are looked up a moment after a key.
    void search() {
        if (words_ != gtk_entry_get_text(entry_)) fill();
    }

    void fill() {
        words_ = gtk_entry_get_text(entry_);
        filling_ = true;
        empty(GTK_WIDGET(list_));
        rows_ = finder_.matches(words_);
        const auto isWanted = [this](std::size_t row) {
            return found_.suggested[row].id == wanted_;
        };
        const auto it = std::ranges::find_if(rows_, isWanted);
        auto place = it - rows_.begin();
        if (it != rows_.end() && place >= mostRows) {
            std::rotate(rows_.begin(), it, it + 1);  // it is seen even where many come before it
            place = 0;
        }
        const auto count = std::ssize(rows_);
        if (place == count) place = words_.empty() || count == 0 ? -1 : 0;
        rows_.resize(static_cast<std::size_t>(std::min(count, mostRows)));
        for (const auto row : rows_)
            gtk_container_add(GTK_CONTAINER(list_), rowOf(found_.suggested[row]));
        gtk_widget_show_all(GTK_WIDGET(list_));
        if (place >= 0)
            gtk_list_box_select_row(list_,
                                    gtk_list_box_get_row_at_index(list_, static_cast<int>(place)));
        hidden_ = true;
        filling_ = false;
        const auto left = std::to_string(count - std::ssize(rows_)) + " more, type to find them";
        gtk_label_set_text(GTK_LABEL(more_), left.c_str());
        gtk_widget_set_visible(more_, count > mostRows);
        gtk_label_set_text(GTK_LABEL(placeholder_), !answered_ ? ""
                                                    : found_.suggested.empty()
                                                        ? "There is nothing pinned to choose from."
                                                        : "No pin has these words.");
        gtk_widget_set_sensitive(button_, place >= 0);
    }

    const Pin* selection() const {
        const auto row = gtk_list_box_get_selected_row(list_);
        return row ? &found_.suggested[rows_[static_cast<std::size_t>(
                         gtk_list_box_row_get_index(row))]]
                   : nullptr;
    }

    /// The user has selected a row.
    void selected() {
        const auto chosen = selection();
        gtk_widget_set_sensitive(button_, chosen != nullptr);
        if (chosen) wanted_ = chosen->id;
    }

    /// Scrolls to the selected row.
    void reveal() const {
        GdkRectangle place{};
        const auto row = gtk_list_box_get_selected_row(list_);
        if (!row) return;
        gtk_widget_get_allocation(GTK_WIDGET(row), &place);
        gtk_adjustment_clamp_page(gtk_scrolled_window_get_vadjustment(scrolled_), place.y,
                                  place.y + place.height);
    }

    void enterList() {
        search();
        auto row = gtk_list_box_get_selected_row(list_);
        if (!row) row = gtk_list_box_get_row_at_index(list_, 0);
        gtk_widget_grab_focus(row ? GTK_WIDGET(row) : GTK_WIDGET(entry_));
        if (row) gtk_list_box_select_row(list_, row);
    }

    void choose() {
        search();
        const auto chosen = selection();
        if (!chosen) return;
        dialog_.close();
        events_.chosen(chosen->id);
    }

    std::string kind_;
    std::optional<std::string> pin_;
    EditorEvents events_;
    GtkEntry* entry_{GTK_ENTRY(gtk_search_entry_new())};
    GtkListBox* list_{GTK_LIST_BOX(gtk_list_box_new())};
    GtkScrolledWindow* scrolled_{GTK_SCROLLED_WINDOW(gtk_scrolled_window_new(nullptr, nullptr))};
    GtkWidget* placeholder_{gtk_label_new(nullptr)};
    GtkWidget* more_{startLabel("", true)};
    GtkWidget* button_{gtk_button_new_with_mnemonic("C_hoose")};
    bool answered_{}, filling_{};
    bool hidden_{};  ///< the selected row may be out of sight, as rows have come
    protocol::Suggestions found_{};
    PinSearch finder_{{}};
    std::string words_{};                ///< that have found the rows
    std::vector<std::size_t> rows_{};    ///< the pins that are shown
    std::optional<std::string> wanted_;  ///< the identifier to select wherever it is among the rows
    Inquiry inquiry_;
    DialogWindow dialog_;  ///< the first to go, as its widgets tell the rest
};

}  // namespace

std::unique_ptr<Dialog> makeEditor(Extension& extension, const std::string& kind,
                                   const std::optional<std::string>& pin, EditorEvents events) {
    return std::make_unique<Editor>(extension, kind, pin, std::move(events));
}

}  // namespace tessary::dialogs
