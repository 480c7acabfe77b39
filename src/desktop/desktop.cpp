#include "desktop/desktop.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>
#include <tuple>
#include <utility>

#include "desktop/glib/note.h"
#include "desktop/places/schedule.h"
#include "desktop/windows/widget_window.h"

namespace tessary::desktop {

using namespace glib;
using namespace places;
using namespace client;
using namespace signs;
using namespace windows;

namespace {

constexpr double never = std::numeric_limits<double>::infinity();
// What the extension goes by from its start to its end, unless TZ names another zone.
constexpr const char* zoneFile = "/etc/localtime";
constexpr std::chrono::milliseconds monitorsSettle{100};
constexpr double afterError = 300;  // seconds until a widget that met an error is asked for again

std::vector<std::string> options(const Desktop::Folders& folders) {
    std::vector<std::string> words{"--container", folders.container};
    if (!folders.info.empty()) words.insert(words.end(), {"--info", folders.info});
    return words;
}

bool looksTheSame(const PlacedWidget& one, const PlacedWidget& other) {
    return one.kind == other.kind && one.family == other.family && one.pin == other.pin;
}

}  // namespace

struct Desktop::Shown {
    explicit Shown(WidgetWindow::Events events) : window{std::move(events)} {}

    /// Shows the entry that is due, and says when to look again.
    double look(double now) {
        if (const auto index = shownEntry(dates, now)) window.show(entries[*index]);
        return nextWake(dates, asked ? never : askAt, now);
    }

    PlacedWidget placed{};
    WidgetWindow window;
    std::vector<Entry> entries{};
    std::vector<double> dates{};  ///< the entries'
    double askAt{never};
    bool asked{};  ///< an answer is under way,
    bool stale{};  ///< and will be of yesterday when it comes
    bool asksDefault{};
};

Desktop::Desktop(Folders folders, std::function<void(const Command&)> chosen)
    : folders_{std::move(folders)},
      chosen_{std::move(chosen)},
      extension_{extensionCommand(options(folders_))},
      dialogs_{extension_,
               {.added =
                    [this](const std::string& kind, Family family) {
                        chosen_({.action = Action::add, .kind = kind, .family = family});
                    },
                .chosen =
                    [this](int number, const std::string& pin) {
                        chosen_({.action = Action::edit, .number = number, .pin = pin});
                    }}},
      alarm_{{.due = [this] { look(); }, .clockSet = [this] { reload(), look(); }}},
      files_{folders_.container + "/widgets/*.json",
             {.stirring =
                  [this] {
                      if (!shown_.empty()) extension_.prepare();
                  },
              .changed = [this] { reload(); }}},
      zone_{zoneFile,
            {.changed =
                 [this] {
                     extension_.renew();
                     reload();
                 }}},
      lock_{[this](bool locked) {
          redacted_ = locked;
          reload();
      }},
      monitorWatch_{[this] { arrange(); }} {}

Desktop::~Desktop() = default;

void Desktop::show(const std::vector<PlacedWidget>& widgets) {
    std::erase_if(shown_, [&](const auto& shown) {
        return std::ranges::find(widgets, shown.first, &PlacedWidget::number) == widgets.end();
    });
    dialogs_.keep(widgets);
    if (names_.empty() && !widgets.empty()) askNames();
    for (const auto& widget : widgets) {
        auto& shown = shown_[widget.number];
        const bool isNew = !shown;
        if (isNew) shown = open(widget);
        const auto before = std::exchange(shown->placed, widget);
        if (before == widget) continue;
        const auto name = names_.find(widget.kind);
        shown->window.setName(name == names_.end() ? shortName(widget.kind) : name->second);
        if (isNew || !looksTheSame(before, widget)) {
            ask(shown);
            keepDefault(shown);
        }
    }
    arrange();
}

std::shared_ptr<Desktop::Shown> Desktop::open(const PlacedWidget& widget) {
    const int number = widget.number;
    std::function<void()> edit;
    if (takesPin(widget.kind)) edit = [this, number] { openEditor(number); };
    return std::make_shared<Shown>(WidgetWindow::Events{
        .scaleChanged = [this, number] { ask(shown_.at(number)); },
        .closed = [this] { arranging_.start(monitorsSettle, [this] { arrange(); }); },
        .moved =
            [this, number](const Place& place) {
                chosen_({.action = Action::edit, .number = number, .place = place});
            },
        .familyChosen =
            [this, number](Family family) {
                chosen_({.action = Action::edit, .number = number, .family = family});
            },
        .editChosen = edit,
        .removeChosen = [this, number] { chosen_({.action = Action::remove, .number = number}); },
        .addChosen = [this] { openGallery(); },
        .quitChosen = [this] { chosen_({.action = Action::quit}); },
    });
}

/// Puts the windows where they belong. A widget whose monitor is gone waits for that to come back.
void Desktop::arrange() {
    const auto all = monitors();
    std::set<MonitorName> names;
    for (const auto& [number, shown] : shown_)
        if (const auto& name = shown->placed.place.monitor) names.insert(*name);
    const auto matches = matchMonitors(names, all);
    for (const auto& [number, shown] : shown_) {
        const auto& [place, family] = std::tie(shown->placed.place, shown->placed.family);
        const auto match = place.monitor ? matches.find(*place.monitor) : matches.end();
        if (place.monitor && match == matches.end())
            shown->window.leave();
        else
            shown->window.place(all[place.monitor ? match->second : 0], place, family);
    }
}

void Desktop::reload() {
    for (const auto& [number, shown] : shown_) {
        ask(shown);
        keepDefault(shown);
    }
    dialogs_.reload();
}

void Desktop::openEditor(int number) {
    const auto it = shown_.find(number);
    if (it != shown_.end() && takesPin(it->second->placed.kind))
        dialogs_.openEditor(it->second->placed);
}

void Desktop::openLink(int number) const {
    const auto it = shown_.find(number);
    if (it != shown_.end()) it->second->window.openLink();
}

void Desktop::askNames() {
    extension_.ask({.request = "list"}, [this](const Reply& reply) {
        for (const auto& widget : reply.kinds) names_[widget.kind] = widget.displayName;
        for (const auto& [number, shown] : shown_)
            if (names_.contains(shown->placed.kind))
                shown->window.setName(names_[shown->placed.kind]);
    });
}

/// Asks once at a time: what changes while an answer is under way makes that one stale.
void Desktop::ask(const std::shared_ptr<Shown>& shown) {
    if (shown->asked) {
        shown->stale = true;
        return;
    }
    shown->asked = true;
    const auto& placed = shown->placed;
    const Request request{.request = "timeline",
                          .widget = placed.kind,
                          .pin = placed.pin,
                          .family = nameOf(placed.family),
                          .scale = shown->window.scale(),
                          .redacted = redacted_};
    extension_.ask(request, [this, asked = std::weak_ptr{shown}](const Reply& reply) {
        if (const auto still = asked.lock()) answered(still, reply);
    });
}

/// Makes the default a widget's choice, so that it shows the same pin from then on. Where there is
/// none yet, the files' next change may bring one.
void Desktop::keepDefault(const std::shared_ptr<Shown>& shown) {
    const auto& placed = shown->placed;
    if (placed.pin || !takesPin(placed.kind) || std::exchange(shown->asksDefault, true)) return;
    const auto answer = [this, asked = std::weak_ptr{shown}](const Reply& reply) {
        const auto still = asked.lock();
        if (!still) return;
        still->asksDefault = false;
        if (still->placed.pin || !reply.pins || !reply.pins->initial) return;
        chosen_({.action = Action::edit,
                 .number = still->placed.number,
                 .pin = reply.pins->initial->id});
    };
    extension_.ask({.request = "pins", .widget = placed.kind}, answer);
}

void Desktop::answered(const std::shared_ptr<Shown>& shown, const Reply& reply) {
    shown->asked = false;
    if (std::exchange(shown->stale, false)) return ask(shown);
    if (!reply.timeline) {
        note("widget " + std::to_string(shown->placed.number) + ": " +
             reply.error.value_or("the extension answers without a timeline"));
        shown->askAt = wallClock() + afterError;
    } else {
        shown->askAt = askDate(reply.timeline->after, wallClock());
        shown->entries = reply.timeline->entries;
        shown->dates.clear();
        for (const auto& entry : shown->entries) shown->dates.push_back(entry.date);
    }
    look();
}

void Desktop::look() {
    const double now = wallClock();
    double wake = never;
    for (const auto& [number, shown] : shown_) {
        if (!shown->asked && shown->askAt <= now) ask(shown);
        wake = std::min(wake, shown->look(now));
    }
    // What is asked for together is due milliseconds apart: one wake is enough for all of it.
    alarm_.set(std::ceil(wake * 10) / 10);
}

}  // namespace tessary::desktop
