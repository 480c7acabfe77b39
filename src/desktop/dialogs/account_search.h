// The window in which a user finds something in the account that no widget shows yet, and pins it.
//
//     AccountSearch search{{Pinnable::alarm}, editor, {.pinned = [](auto& id) { ... },
//                                                      .closed = ...}};
//     search.present();
//
// It opens at once and fills when the feed's program has listed what there is. What that still does
// ends when the window closes.
#pragma once

#include <chrono>
#include <functional>
#include <gtk/gtk.h>
#include <map>
#include <memory>
#include <string>

#include "desktop/client/chore.h"
#include "desktop/client/feed.h"
#include "desktop/dialogs/choice_list.h"
#include "desktop/dialogs/dialog_window.h"
#include "desktop/glib/timer.h"

namespace tessary::dialogs {

class AccountSearch {
public:
    /// What the window tells; each is called from the main loop and has to be there.
    struct Events {
        std::function<void(const std::string& id)> pinned{};  ///< now or before
        std::function<void()> closed{};                       ///< may destroy this
    };

    /// In front of that window, which has to stay.
    AccountSearch(client::Account account, const DialogWindow& before, Events events);
    AccountSearch(const AccountSearch&) = delete;
    AccountSearch& operator=(const AccountSearch&) = delete;
    ~AccountSearch() = default;

    void present() { dialog_.present(); }

private:
    bool isMetric() const { return account_.pinnable == client::Pinnable::metric; }
    void addNotes();
    void addBottom();
    void list(const client::Scope& scope);
    void listed(const client::Scope& scope, client::Offers offers, PinSearch finder);
    void showNotes();
    void listMore();
    void choose();
    void pin(const client::Way& way, const std::string& name);
    void setBusy(const std::string& words);
    void clear();
    void fail(const client::Failure& why);

    client::Account account_;
    Events events_;
    client::Offers offers_{};
    std::map<client::Scope, bool> asked_{};  ///< with whether there is more of it
    GtkWidget* notes_{startLabel("", true)};
    GtkWidget* spinner_{gtk_spinner_new()};
    GtkWidget* busy_{startLabel("", true)};
    ChoiceList list_;
    glib::Timer typing_{};
    client::Chore chore_{};
    DialogWindow dialog_;  ///< the first to go, as its widgets tell the rest
};

}  // namespace tessary::dialogs
