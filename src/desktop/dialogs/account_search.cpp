#include "desktop/dialogs/account_search.h"

#include <algorithm>
#include <utility>

#include "desktop/glib/connect.h"

namespace tessary::dialogs {

using namespace client;
using namespace glib;

namespace {

constexpr places::Size searchSize{560, 600};
constexpr std::chrono::milliseconds typingPause{600};
constexpr std::size_t mostFaults = 4;

/// What a thread has read of a listing, and made findable, for the window to show.
struct Read {
    foundation::Result<Offers, Failure> offers;
    PinSearch finder{{}};
};

Read readListing(const Account& account, Offers before, const Chore::Outcome& outcome) {
    auto offers = offersOf(account, outcome);
    if (!offers) return {std::move(offers)};
    before.add(*std::move(offers));
    PinSearch finder{before.offered};
    return {std::move(before), std::move(finder)};
}

void makeSmall(GtkWidget* label) {
    const auto attributes = pango_attr_list_new();
    pango_attr_list_insert(attributes, pango_attr_scale_new(PANGO_SCALE_SMALL));
    gtk_label_set_attributes(GTK_LABEL(label), attributes);
    pango_attr_list_unref(attributes);
}

}  // namespace

AccountSearch::AccountSearch(Account account, const DialogWindow& before, Events events)
    : account_{std::move(account)},
      events_{std::move(events)},
      list_{
          ChoiceList::Click::chooses,
          {.chosen = [this] { choose(); },
           .left = [this] { dialog_.close(); },
           .typed =
               [this](const std::string&) { typing_.start(typingPause, [this] { listMore(); }); }}},
      dialog_{searchSize, events_.closed} {
    dialog_.standBefore(before);
    dialog_.setTitle(isMetric() ? "Pin Another Metric" : "Pin Another Alarm");
    dialog_.add(list_.widget(), true);
    list_.setName("What the account has");
    addNotes();
    addBottom();
    list({});
}

void AccountSearch::addNotes() {
    wrap(notes_);
    makeSmall(notes_);
    gtk_widget_set_no_show_all(notes_, TRUE);
    dialog_.add(notes_, false);
}

void AccountSearch::addBottom() {
    const auto row = gtk_box_new(GTK_ORIENTATION_HORIZONTAL, 6);
    const auto back = gtk_button_new_with_mnemonic("_Back");
    gtk_label_set_ellipsize(GTK_LABEL(busy_), PANGO_ELLIPSIZE_END);
    gtk_box_pack_start(GTK_BOX(row), spinner_, FALSE, FALSE, 0);
    gtk_box_pack_start(GTK_BOX(row), busy_, TRUE, TRUE, 0);
    gtk_box_pack_end(GTK_BOX(row), back, FALSE, FALSE, 0);
    dialog_.add(row, false);
    connect(back, "clicked", [this] { dialog_.close(); });
}

void AccountSearch::setBusy(const std::string& words) {
    gtk_label_set_text(GTK_LABEL(busy_), shortened(words).c_str());
    words.empty() ? gtk_spinner_stop(GTK_SPINNER(spinner_))
                  : gtk_spinner_start(GTK_SPINNER(spinner_));
}

void AccountSearch::fail(const Failure& why) {
    dialog_.setStatus(why.words);
    const bool helps = !why.command.empty();
    dialog_.setHint(helps ? "To go on, type this in a terminal:" : "", why.command);
}

void AccountSearch::clear() {
    setBusy("");
    dialog_.setStatus("");
    dialog_.setHint("", "");
}

void AccountSearch::list(const Scope& scope) {
    setBusy(scope.empty() ? "Searching…" : "Searching " + scope.back() + "…");
    asked_[scope] = false;
    const auto understand = [this, account = account_, before = offers_,
                             scope](const Chore::Outcome& outcome) -> Chore::Next {
        return [this, scope, read = readListing(account, before, outcome)] {
            clear();
            read.offers ? listed(scope, *read.offers, read.finder) : fail(read.offers.fault());
        };
    };
    chore_.start(listing(account_, scope), understand);
}

void AccountSearch::listed(const Scope& scope, Offers offers, PinSearch finder) {
    asked_[scope] = offers.more;
    offers_ = std::move(offers);
    const std::string name{foundation::name(account_.pinnable)};
    list_.setWords("There is no " + name + " in what is watched.",
                   "No " + name + " has these words.");
    list_.offer(offers_.offered, std::move(finder));
    showNotes();
    listMore();  // what was typed meanwhile
}

void AccountSearch::showNotes() {
    std::string text;
    if (asked_[{}])
        text = isMetric()
                   ? "Not all are listed: type a namespace, such as AWS/RDS, to find more of them."
                   : "Not all are listed: tessary-widgets-feed pin alarm NAME pins any of them.";
    const auto count = std::min(mostFaults, offers_.faults.size());
    for (std::size_t i = 0; i < count; ++i) text += (text.empty() ? "" : "\n") + offers_.faults[i];
    if (const auto left = offers_.faults.size() - count; left > 0)
        text += "\nand " + std::to_string(left) + " more like that";
    gtk_label_set_text(GTK_LABEL(notes_), text.c_str());
    gtk_widget_set_visible(notes_, !text.empty());
}

/// Where what is typed may be among what was left out.
void AccountSearch::listMore() {
    if (!isMetric() || chore_.running()) return;
    const auto scope = scopeToAsk(list_.words(), offers_, asked_, !list_.finds());
    if (scope) list(*scope);
}

void AccountSearch::choose() {
    const auto place = list_.chosen();
    if (!place) return;
    const auto& pin = list_.offered()[*place];
    const auto& way = offers_.ways[*place];
    if (!way.pinned) return this->pin(way, pin.name);
    events_.pinned(pin.id);
}

void AccountSearch::pin(const Way& way, const std::string& name) {
    clear();
    setBusy("Pinning " + name + "…");
    gtk_widget_set_sensitive(list_.widget(), FALSE);
    const auto understand = [this](const Chore::Outcome& outcome) -> Chore::Next {
        return [this, id = pinnedBy(outcome)] {
            gtk_widget_set_sensitive(list_.widget(), TRUE);
            list_.focus();
            clear();
            id ? events_.pinned(*id) : fail(id.fault());
        };
    };
    chore_.start(pinning(account_, way), understand);
}

}  // namespace tessary::dialogs
