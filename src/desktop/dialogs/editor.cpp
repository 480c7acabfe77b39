#include "desktop/dialogs/editor.h"

#include <algorithm>
#include <utility>

#include "desktop/client/feed.h"
#include "desktop/client/inquiry.h"
#include "desktop/dialogs/account_search.h"
#include "desktop/dialogs/choice_list.h"
#include "desktop/dialogs/dialog_window.h"
#include "desktop/glib/connect.h"

namespace tessary::dialogs {

using namespace places;
using namespace client;
using namespace glib;

namespace {

constexpr Size editorSize{420, 520};

class Editor final : public Dialog {
public:
    Editor(Extension& extension, Edited edited, EditorEvents events)
        : kind_{std::move(edited.kind)},
          pin_{std::move(edited.pin)},
          feedOptions_{std::move(edited.feedOptions)},
          pinnable_{foundation::parse<Pinnable>(shortName(kind_))},
          events_{std::move(events)},
          inquiry_{extension, [this] { ask(); }},
          dialog_{editorSize, events_.closed} {
        dialog_.setTitle("Choose");
        if (pin_) list_.want(*pin_);
        dialog_.add(list_.widget(), true);
        addButtons();
        dialog_.setStatus("One moment…");
        inquiry_.start();
    }

    void present() override { dialog_.present(); }
    void reload() override { inquiry_.start(); }
    void setTrouble(const std::string& why) override { dialog_.setTrouble(why); }

private:
    void addButtons() {
        const auto row = gtk_box_new(GTK_ORIENTATION_HORIZONTAL, 6);
        const auto cancel = gtk_button_new_with_mnemonic("_Cancel");
        gtk_style_context_add_class(gtk_widget_get_style_context(button_), "suggested-action");
        gtk_widget_set_sensitive(button_, FALSE);
        if (pinnable_) addAnother(row);
        gtk_box_pack_end(GTK_BOX(row), button_, FALSE, FALSE, 0);
        gtk_box_pack_end(GTK_BOX(row), cancel, FALSE, FALSE, 0);
        dialog_.add(row, false);
        connect(button_, "clicked", [this] { choose(); });
        connect(cancel, "clicked", [this] { dialog_.close(); });
    }

    void addAnother(GtkWidget* row) {
        const auto another = gtk_button_new_with_mnemonic("_Pin another…");
        gtk_box_pack_start(GTK_BOX(row), another, FALSE, FALSE, 0);
        connect(another, "clicked", [this] {
            const auto pinned = [this](const std::string& id) { choose(id); };
            const auto closed = [this] { search_.reset(); };
            if (!search_)
                search_ =
                    std::make_unique<AccountSearch>(Account{*pinnable_, feedOptions_}, dialog_,
                                                    AccountSearch::Events{pinned, closed});
            search_->present();
        });
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
        if (std::exchange(answered_, true) && pins.suggested == list_.offered()) return;
        dialog_.setTitle("Choose a " + pins.type);
        list_.setName(pins.type);
        list_.setWords("There is nothing pinned to choose from.", "No pin has these words.");
        if (!list_.wanted() && pins.initial) list_.want(pins.initial->id);
        list_.offer(pins.suggested, PinSearch{pins.suggested});
    }

    void choose() {
        if (const auto place = list_.chosen()) choose(list_.offered()[*place].id);
    }
    void choose(const std::string& id) {
        dialog_.close();
        events_.chosen(id);
    }

    std::string kind_;
    std::optional<std::string> pin_;
    std::vector<std::string> feedOptions_;
    std::optional<Pinnable> pinnable_;
    EditorEvents events_;
    GtkWidget* button_{gtk_button_new_with_mnemonic("C_hoose")};
    bool answered_{};
    ChoiceList list_{
        ChoiceList::Click::selects,
        {.chosen = [this] { choose(); },
         .left = [this] { dialog_.close(); },
         .selected = [this] { gtk_widget_set_sensitive(button_, list_.selection().has_value()); }}};
    Inquiry inquiry_;
    DialogWindow dialog_;  ///< goes before what its widgets tell
    std::unique_ptr<AccountSearch> search_{};
};

}  // namespace

std::unique_ptr<Dialog> makeEditor(Extension& extension, Edited edited, EditorEvents events) {
    return std::make_unique<Editor>(extension, std::move(edited), std::move(events));
}

}  // namespace tessary::dialogs
