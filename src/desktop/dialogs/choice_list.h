// A search entry, and below it the list that its words narrow, for one of it to be chosen.
//
//     ChoiceList list{ChoiceList::Click::chooses, {.chosen = [&] { take(*list.chosen()); },
//                                                  .left = [&] { dialog.close(); }}};
//     dialog.add(list.widget(), true);
//     list.offer(pins, PinSearch{pins});
//
// The first 200 are shown, and a line says how many more there are.
#pragma once

#include <cstddef>
#include <functional>
#include <gtk/gtk.h>
#include <optional>
#include <string>
#include <vector>

#include "desktop/client/messages.h"
#include "desktop/dialogs/dialog_window.h"
#include "desktop/dialogs/pin_search.h"

namespace tessary::dialogs {

class ChoiceList {
public:
    /// Each is called from the main loop.
    struct Events {
        std::function<void()> chosen{};    ///< by Enter or a click; has to be there
        std::function<void()> left{};      ///< by Escape in the entry; has to be there
        std::function<void()> selected{};  ///< something else than before, or nothing
        std::function<void(const std::string& words)> typed{};
    };
    enum class Click { selects, chooses };

    /// The window that it is put into has to go before it does.
    ChoiceList(Click click, Events events);
    ChoiceList(const ChoiceList&) = delete;
    ChoiceList& operator=(const ChoiceList&) = delete;

    GtkWidget* widget() const { return box_; }

    /// Has what is typed go to the entry.
    void focus() { gtk_entry_grab_focus_without_selecting(entry_); }

    /// What a screen reader calls the list.
    void setName(const std::string& name);

    /// What stands there where nothing is offered, and where no words find anything.
    void setWords(const std::string& ifNone, const std::string& ifNotFound);

    /// Shows these instead. What is selected stays so, and so does the focus in the list.
    void offer(std::vector<client::Pin> pins, PinSearch finder);
    const std::vector<client::Pin>& offered() const { return offered_; }

    /// Selects one wherever it is among the rows, now or later.
    void want(const std::string& id) { wanted_ = id; }
    const std::optional<std::string>& wanted() const { return wanted_; }

    /// The place of what is selected among all, once the list shows what was typed last.
    std::optional<std::size_t> chosen();
    std::optional<std::size_t> selection() const;

    /// Whether what was typed last finds anything.
    bool finds() const { return !rows_.empty(); }
    const std::string& words() const { return words_; }

private:
    void addEntry();
    void addList();
    void search();
    void fill();
    std::ptrdiff_t arrangeRows();
    void showWords(std::ptrdiff_t more);
    void enterList();
    void reveal() const;
    void changed() const;

    Events events_;
    GtkWidget* box_{gtk_box_new(GTK_ORIENTATION_VERTICAL, 12)};
    GtkEntry* entry_{GTK_ENTRY(gtk_search_entry_new())};
    GtkListBox* list_{GTK_LIST_BOX(gtk_list_box_new())};
    GtkScrolledWindow* scrolled_{GTK_SCROLLED_WINDOW(gtk_scrolled_window_new(nullptr, nullptr))};
    GtkWidget* placeholder_{gtk_label_new(nullptr)};
    GtkWidget* more_{startLabel("", true)};
    bool filling_{};
    bool hidden_{};  ///< the selected row may be out of sight, as rows have come
    std::string ifNone_{}, ifNotFound_{};
    std::vector<client::Pin> offered_{};
    PinSearch finder_{{}};
    std::string words_{};                  ///< that have found the rows
    std::vector<std::size_t> rows_{};      ///< the pins that are shown
    std::optional<std::string> wanted_{};  ///< the identifier to select
};

}  // namespace tessary::dialogs
