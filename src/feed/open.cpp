#include "feed/open.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <poll.h>
#include <variant>

#include "feed/aws/client.h"
#include "feed/browser.h"
#include "feed/bus/notifications.h"
#include "feed/links/console.h"
#include "feed/links/link.h"
#include "feed/notes.h"
#include "feed/plan.h"
#include "platform/foundation/visible_text.h"
#include "platform/system/files.h"
#include "snapshot/alarms_snapshot.h"

namespace tessary::feed {

using aws::Place;
using links::AlarmLink;
using links::AlarmsLink;
using links::Console;
using links::MetricLink;

namespace {

/// On the desktop, where somebody is there to show it within two seconds.
void notify(const std::string& words) {
    constexpr double patience = 2;
    bool isOver = false;
    bus::Notifications notifications{{.tell = [&](const std::string&) { isOver = true; }}};
    notifications.show({.matter = "open", .title = "Nothing to open", .body = words});
    for (const double end = aws::steadySeconds() + patience; !isOver && aws::steadySeconds() < end;
         notifications.process()) {
        auto wanted = notifications.connection().wanted();
        const double seconds = std::min(wanted.seconds.value_or(patience), patience);
        ::poll(&wanted.events, 1, static_cast<int>(std::ceil(seconds * 1000)));
    }
}

/// What a click has to say is seen by nobody on standard error alone.
int told(const std::string& words) {
    notify(words);
    return complained({words}, failed);
}

int show(const Console::Page& page) {
    return page ? showPage(*page) : told(page.fault().message());
}

/// Of the alarm that the widget shows first.
std::optional<Place> firstFiring(const Paths& paths) {
    const auto text = system::readFile(paths.alarms());
    if (!text) return std::nullopt;
    const auto shown = foundation::decodeJSON<snapshot::AlarmsSnapshot>(*text);
    if (!shown || shown->topAlarms.empty()) return std::nullopt;
    return Place{shown->topAlarms.front().profile, shown->topAlarms.front().region};
}

/// Finds a link's page by what is watched and pinned now.
class Finder {
public:
    Finder(const Paths& paths, const Plan& plan) : paths_(paths), plan_(plan) {}

    int operator()(const AlarmsLink&) const {
        auto place = firstFiring(paths_);
        const auto& targets = plan_.watched.targets;
        if (!place && targets.empty()) return told(whyNothing(plan_, paths_));
        if (!place) place = Place{targets.front().profile, targets.front().region};
        return show(console_.alarms(*place));
    }
    int operator()(const AlarmLink& link) const { return show(console_.alarm(link)); }
    int operator()(const MetricLink& link) const {
        const auto& pins = plan_.settings.metrics;
        const auto pin = std::ranges::find(pins, link.pin, &settings::MetricPin::id);
        if (pin != pins.end()) return show(console_.metric(*pin));
        return told("no metric is pinned as '" + foundation::visible(link.pin) + "' any more");
    }

private:
    const Paths& paths_;
    const Plan& plan_;
    Console console_{plan_.surroundings.profiles};
};

}  // namespace

int openLink(const std::string& url) {
    const auto link = links::parseLink(url);
    if (!link) return complained(link.fault(), wrongCall);
    const auto paths = Paths::find({});
    if (!paths) return complained(paths.fault(), failed);
    const auto plan = loadPlan(*paths, aws::KeySources::ofEnvironment());
    if (!plan) return complained(plan.fault(), wrongCall);
    return std::visit(Finder{*paths, *plan}, *link);
}

}  // namespace tessary::feed
