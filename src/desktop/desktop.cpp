#include "desktop/desktop.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>
#include <tuple>
#include <utility>

#include "desktop/places/schedule.h"

namespace tessary::desktop {

using namespace places;
using namespace client;

namespace {

constexpr double never = std::numeric_limits<double>::infinity();
constexpr double afterError = 300;  // seconds until a widget that met an error is asked for again
constexpr double lateAfter = 600;   // seconds without the answer that is due, and a widget says so

bool looksTheSame(const PlacedWidget& one, const PlacedWidget& other) {
    return one.kind == other.kind && one.family == other.family && one.pin == other.pin;
}

}  // namespace

struct Desktop::Shown {
    /// Shows the entry that is due, and says when to look again.
    double look(double now) {
        if (const auto index = shownEntry(dates, now)) card->show(entries[*index]);
        const double lateAt = lacking.since + lateAfter;
        return std::min(nextWake(dates, asked ? never : askAt, now), lateAt > now ? lateAt : never);
    }

    /// An answer that it wants and has not got.
    struct Lacking {
        double since{never};
        int errors{};       ///< that came instead, in a row
        std::string why{};  ///< the last of them
    };

    PlacedWidget placed{};
    std::unique_ptr<windows::Card> card{};
    std::vector<Entry> entries{};
    std::vector<double> dates{};  ///< the entries'
    double askAt{never};
    bool asked{};  ///< an answer is under way,
    bool stale{};  ///< and will be of yesterday when it comes
    bool asksDefault{};
    Lacking lacking{};
};

Desktop::Desktop(Ground ground, std::function<void(const Command&)> chosen)
    : ground_{std::move(ground)}, chosen_{std::move(chosen)} {}

Desktop::~Desktop() = default;

Signs Desktop::signs() {
    const auto stir = [this] {
        if (!shown_.empty()) ground_.extension.prepare();
    };
    const auto moveOn = [this] {
        ground_.extension.moveTo(ground_.zone());
        reload();
    };
    const auto lock = [this](bool locked) {
        redacted_ = locked;
        reload();
    };
    const auto clockSet = [this] {
        for (const auto& [number, shown] : shown_)
            if (shown->lacking.since != never) shown->lacking.since = ground_.now();
        reload();
        look();
    };
    return {.clock = {.due = [this] { look(); }, .clockSet = clockSet},
            .files = {.stirring = stir, .changed = [this] { reload(); }},
            .zone = {.changed = moveOn},
            .lock = lock,
            .monitors = [this] { arrange(); },
            .trouble = [this](const Trouble& trouble) { tellTrouble(trouble); }};
}

void Desktop::show(const std::vector<PlacedWidget>& widgets) {
    std::erase_if(shown_, [&](const auto& shown) {
        return std::ranges::find(widgets, shown.first, &PlacedWidget::number) == widgets.end();
    });
    ground_.dialogs.keep(widgets);
    if (kinds_.empty() && !widgets.empty()) askKinds();
    for (const auto& widget : widgets) {
        auto& shown = shown_[widget.number];
        const bool isNew = !shown;
        if (isNew) shown = open(widget);
        const auto before = std::exchange(shown->placed, widget);
        if (before == widget) continue;
        if (isNew) tellKind(*shown);
        if (isNew || !looksTheSame(before, widget)) {
            ask(shown);
            keepDefault(shown);
        }
    }
    arrange();
}

std::shared_ptr<Desktop::Shown> Desktop::open(const PlacedWidget& widget) {
    const int number = widget.number;
    const auto choose = [this, number](Command command) {
        command.number = number;
        chosen_(command);
    };
    auto shown = std::make_shared<Shown>();
    shown->card = ground_.openCard({
        .scaleChanged = [this, number] { ask(shown_.at(number)); },
        .clicked = [this, number] { hurry(shown_.at(number)); },
        .closed = [this] { arrange(); },
        .moved = [choose](auto& place) { choose({.action = Action::edit, .place = place}); },
        .familyChosen =
            [choose](auto& family) { choose({.action = Action::edit, .family = family.name}); },
        .editChosen = [this, number] { openEditor(number); },
        .removeChosen = [choose] { choose({.action = Action::remove}); },
        .addChosen = [this] { openGallery(); },
        .quitChosen = [choose] { choose({.action = Action::quit}); },
    });
    return shown;
}

/// Puts the windows where they belong. A widget whose monitor is gone waits for that to come back.
void Desktop::arrange() {
    const auto all = ground_.monitors();
    std::set<MonitorName> names;
    for (const auto& [number, shown] : shown_)
        if (const auto& name = shown->placed.place.monitor) names.insert(*name);
    const auto matches = matchMonitors(names, all);
    for (const auto& [number, shown] : shown_) {
        const auto& [place, family] = std::tie(shown->placed.place, shown->placed.family);
        const auto match = place.monitor ? matches.find(*place.monitor) : matches.end();
        if (place.monitor && match == matches.end())
            shown->card->leave();
        else
            shown->card->place(all[place.monitor ? match->second : 0], place, family);
    }
}

void Desktop::reload() {
    if (trouble_.failures > 0) ground_.extension.hurry();
    for (const auto& [number, shown] : shown_) {
        ask(shown);
        keepDefault(shown);
    }
    ground_.dialogs.setBegun(ground_.begun());
    ground_.dialogs.reload();
}

void Desktop::openGallery() {
    ground_.dialogs.setBegun(ground_.begun());
    ground_.dialogs.openGallery();
}

void Desktop::openEditor(int number) {
    const auto it = shown_.find(number);
    if (it == shown_.end()) return;
    const auto kind = kindNamed(kinds_, it->second->placed.kind);
    if (kind && kind->takesPin) ground_.dialogs.openEditor(it->second->placed);
}

foundation::Result<void> Desktop::openLink(int number) {
    const auto it = shown_.find(number);
    if (it == shown_.end()) return {};
    hurry(it->second);
    return it->second->card->openLink();
}

/// Somebody is there who looks at it: what went wrong is tried again.
void Desktop::hurry(const std::shared_ptr<Shown>& shown) {
    if (trouble_.failures > 0) ground_.extension.hurry();
    if (shown->lacking.errors > 0 && !shown->asked) ask(shown);
}

void Desktop::askKinds() {
    ground_.extension.ask({.request = "list"}, [this](const Reply& reply) { learn(reply.kinds); });
}

/// Of the sizes, those that are others than the widgets were placed with become theirs.
void Desktop::learn(Kinds kinds) {
    kinds_ = std::move(kinds);
    std::vector<Command> grown;
    for (const auto& [number, shown] : shown_) {
        tellKind(*shown);
        keepDefault(shown);
        const auto& [name, size] = shown->placed.family;
        const auto kind = kindNamed(kinds_, shown->placed.kind);
        const auto family = kind ? familyNamed(*kind, name) : std::nullopt;
        if (family && family->size != size)
            grown.push_back({.action = Action::edit, .number = number, .family = name});
    }
    for (const auto& command : grown) chosen_(command);
}

/// Before the list has come, a widget has the name that its kind suggests, and one size.
void Desktop::tellKind(Shown& shown) const {
    const auto& word = shown.placed.kind;
    const auto kind = kindNamed(kinds_, word);
    shown.card->setKind(kind ? *kind : Kind{.kind = word, .displayName = shortName(word)});
}

/// Asks once at a time: what changes while an answer is under way makes that one stale.
void Desktop::ask(const std::shared_ptr<Shown>& shown) {
    if (shown->asked) {
        shown->stale = true;
        return;
    }
    shown->asked = true;
    shown->lacking.since = std::min(shown->lacking.since, ground_.now());
    const auto& placed = shown->placed;
    const Request request{.request = "timeline",
                          .widget = placed.kind,
                          .pin = placed.pin,
                          .family = placed.family.name,
                          .scale = shown->card->scale(),
                          .redacted = redacted_,
                          .display = false};
    ground_.extension.ask(request, [this, asked = std::weak_ptr{shown}](const Reply& reply) {
        if (const auto still = asked.lock()) answered(still, reply);
    });
}

/// Makes the default a widget's choice, so that it shows the same pin from then on. Where there is
/// none yet, the files' next change may bring one.
void Desktop::keepDefault(const std::shared_ptr<Shown>& shown) {
    const auto& placed = shown->placed;
    const auto kind = kindNamed(kinds_, placed.kind);
    if (placed.pin || !kind || !kind->takesPin || std::exchange(shown->asksDefault, true)) return;
    const auto answer = [this, asked = std::weak_ptr{shown}](const Reply& reply) {
        const auto still = asked.lock();
        if (!still) return;
        still->asksDefault = false;
        if (still->placed.pin || !reply.pins || !reply.pins->initial) return;
        chosen_({.action = Action::edit,
                 .number = still->placed.number,
                 .pin = reply.pins->initial->id});
    };
    ground_.extension.ask({.request = "pins", .widget = placed.kind}, answer);
}

void Desktop::answered(const std::shared_ptr<Shown>& shown, const Reply& reply) {
    shown->asked = false;
    auto& [since, errors, why] = shown->lacking;
    errors = reply.timeline ? 0 : errors + 1;
    why = reply.error.value_or("");
    if (std::exchange(shown->stale, false)) return ask(shown);
    if (!reply.timeline) {
        ground_.note("widget " + std::to_string(shown->placed.number) + ": " + why);
        shown->askAt = ground_.now() + afterError;
    } else {
        since = never;
        shown->askAt = askDate(reply.timeline->after, ground_.now());
        shown->entries = reply.timeline->entries;
        shown->dates.clear();
        for (const auto& entry : shown->entries) shown->dates.push_back(entry.date);
    }
    look();
}

void Desktop::look() {
    const double now = ground_.now();
    double wake = never;
    for (const auto& [number, shown] : shown_) {
        if (!shown->asked && shown->askAt <= now) ask(shown);
        shown->card->setTrouble(trouble(*shown, now));
        wake = std::min(wake, shown->look(now));
    }
    // What is asked for together is due milliseconds apart: one wake is enough for all of it.
    ground_.wake(std::ceil(wake * 10) / 10);
}

void Desktop::tellTrouble(const Trouble& trouble) {
    trouble_ = trouble;
    const auto why = this->trouble();
    ground_.dialogs.setTrouble(why.empty() ? "" : "There is no answer at the moment: " + why);
    look();
}

std::string Desktop::trouble() const {
    return trouble_.failures >= failuresToTell ? trouble_.why : "";
}

/// What a widget says of itself whose picture may be out of date.
std::string Desktop::trouble(const Shown& shown, double now) const {
    const std::string words = "This widget could not be brought up to date: ";
    const auto& [since, errors, why] = shown.lacking;
    if (errors >= failuresToTell) return words + why;
    if (shown.asked && !trouble().empty()) return words + trouble();
    if (now < since + lateAfter) return {};
    return words + (why.empty() ? "there has been no new picture for ten minutes" : why);
}

}  // namespace tessary::desktop
