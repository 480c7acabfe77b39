#include "feed/pinning.h"

#include <algorithm>
#include <type_traits>
#include <utility>

#include "feed/additions/additions.h"
#include "feed/aws/shell_words.h"
#include "feed/notes.h"
#include "feed/rounds/listing.h"
#include "feed/searching.h"
#include "feed/session.h"
#include "platform/foundation/joined.h"
#include "platform/foundation/json_writing.h"
#include "platform/foundation/nearest.h"
#include "platform/foundation/visible_text.h"

namespace tessary::feed {

using additions::Additions;
using foundation::Fault;
using foundation::Result;
using foundation::visible;
using rounds::Place;
using settings::AlarmPin;
using settings::MetricPin;
using Places = std::vector<Place>;

/// What `pin --json` prints.
struct PinnedNow {
    std::string id{};
    std::string label{};
    std::string profile{};
    std::string region{};
};
struct Pinning {
    std::vector<PinnedNow> pins{};
    std::vector<std::string> faults{};
};

}  // namespace tessary::feed

namespace tessary::foundation {

template <>
inline constexpr auto fieldsOf<feed::PinnedNow> = std::tuple{
    Field{"id", &feed::PinnedNow::id},
    Field{"label", &feed::PinnedNow::label},
    Field{"profile", &feed::PinnedNow::profile},
    Field{"region", &feed::PinnedNow::region},
};

template <>
inline constexpr auto fieldsOf<feed::Pinning> = std::tuple{
    Field{"pins", &feed::Pinning::pins},
    Field{"faults", &feed::Pinning::faults},
};

}  // namespace tessary::foundation

namespace tessary::feed {

namespace {

// ---- what is looked for

aws::AlarmsQuery queryFor(const AlarmPin& pin) { return {.names = std::vector{pin.name}}; }
aws::MetricsQuery queryFor(const MetricPin& pin) {
    std::vector<aws::Dimension> dimensions;
    for (const auto& [name, value] : pin.dimensions) dimensions.push_back({name, value});
    aws::MetricsQuery query{.namespace_ = pin.namespace_, .name = pin.name};
    if (!dimensions.empty()) query.dimensions = dimensions;
    return query;
}

bool isIt(const aws::DescribedAlarm& alarm, const AlarmPin& pin) { return alarm.name == pin.name; }
bool isIt(const aws::Metric& metric, const MetricPin& pin) {
    return metric.namespace_ == pin.namespace_ && metric.name == pin.name &&
           rounds::dimensionsOf(metric) == pin.dimensions;
}

/// Among what the pin's name was probably meant to be.
aws::AlarmsQuery neighboursOf(const AlarmPin&) { return {}; }
aws::MetricsQuery neighboursOf(const MetricPin& pin) { return {.namespace_ = pin.namespace_}; }

std::string spelt(const aws::DescribedAlarm& alarm) { return alarm.name; }
std::string spelt(const aws::Metric& metric) {
    return typed({.namespace_ = metric.namespace_.value_or(""),
                  .name = metric.name.value_or(""),
                  .dimensions = rounds::dimensionsOf(metric)});
}
std::string spelt(const AlarmPin& pin) { return pin.name; }
std::string spelt(const MetricPin& pin) {
    return typed({.namespace_ = pin.namespace_, .name = pin.name, .dimensions = pin.dimensions});
}

// ---- what is pinned of it

bool isSame(const AlarmPin& a, const AlarmPin& b) {
    return a.profile == b.profile && a.region == b.region && a.name == b.name;
}
bool isSame(const MetricPin& a, const MetricPin& b) {
    return a.profile == b.profile && a.region == b.region && a.namespace_ == b.namespace_ &&
           a.name == b.name && a.dimensions == b.dimensions && a.statistic == b.statistic;
}

void adopt(AlarmPin& old, const AlarmPin& pin, bool isLabelled) {
    if (isLabelled) old.label = pin.label;
}
void adopt(MetricPin& old, const MetricPin& pin, bool isLabelled) {
    if (isLabelled) old.label = pin.label;
    old.period = pin.period;
}

auto& listOf(Additions& added, const AlarmPin&) { return added.alarms; }
auto& listOf(Additions& added, const MetricPin&) { return added.metrics; }
const auto& listOf(const settings::Settings& written, const AlarmPin&) { return written.alarms; }
const auto& listOf(const settings::Settings& written, const MetricPin&) { return written.metrics; }

/// Adds it, unless it is pinned: then under that id, with the new label and period.
template <class Pin>
Result<Pin> put(Additions& added, const settings::Settings& written, const Pin& asked) {
    const Pin pin = settings::completed(asked);
    const auto& others = listOf(written, pin);
    auto& own = listOf(added, pin);
    const auto isOld = [&](const Pin& each) {
        return isSame(each, pin) && (asked.id.empty() || asked.id == each.id);
    };
    if (const auto old = std::ranges::find_if(others, isOld); old != others.end()) return *old;
    if (const auto old = std::ranges::find_if(own, isOld); old != own.end()) {
        adopt(*old, pin, !asked.label.empty());
        return *old;
    }
    for (const auto* list : {&others, &std::as_const(own)})
        if (std::ranges::find(*list, pin.id, &Pin::id) != list->end())
            return Fault{"the id '" + visible(pin.id) + "' is another pin's"};
    own.push_back(pin);
    return pin;
}

// ---- pin

template <class Pin>
struct Sought {
    Places places{};  ///< where it was found
    std::vector<std::string> faults{};
};

/// "no alarm 'x' is known in prod · us-east-1; did you mean y?"
template <class Pin>
std::string notFound(const Pin& pin, const Places& places, Session& session) {
    const auto findings =
        session.asker.search(session.plan.surroundings, places, neighboursOf(pin));
    std::vector<std::string> names;
    for (const auto& finding : findings)
        for (const auto& item : finding.items) names.push_back(spelt(item));
    const bool isAlarm = std::is_same_v<Pin, AlarmPin>;
    return std::string{isAlarm ? "no alarm '" : "no metric '"} + visible(spelt(pin)) +
           "' is known in " + foundation::joined(places, ", ", nameOf) +
           visible(foundation::didYouMean(spelt(pin), names), 1000);
}

/// Where it is, and what went wrong on the way. A single place that cannot be asked is believed.
template <class Pin>
Sought<Pin> sought(const Pin& pin, const Places& places, Session& session) {
    const auto findings = session.asker.search(session.plan.surroundings, places, queryFor(pin));
    Sought<Pin> sought{.faults = rounds::faultsOf(findings)};
    Places answered;
    for (const auto& finding : findings) {
        const auto is = [&](const auto& item) { return isIt(item, pin); };
        if (std::ranges::any_of(finding.items, is)) sought.places.push_back(finding.place);
        if (!finding.fault) answered.push_back(finding.place);
    }
    if (!sought.places.empty()) return sought;
    if (!answered.empty())
        sought.faults.insert(sought.faults.begin(), notFound(pin, answered, session));
    else if (places.size() == 1 && !pin.region.empty())
        sought.places = places;
    return sought;
}

template <class Pin>
Result<std::vector<Pin>> added(const Pin& pin, const Places& places, const Session& session) {
    if (places.size() > 1 && !pin.id.empty())
        return Fault{"one id is not enough, it is in " + foundation::joined(places, ", ", nameOf) +
                     ": name --profile and --region"};
    std::vector<Pin> pins;
    const auto changed = additions::change(session.paths.additions, [&](Additions& additions) {
        for (const auto& [profile, region] : places) {
            Pin asked = pin;
            asked.profile = profile;
            asked.region = region;
            auto done = put(additions, session.plan.written, asked);
            if (!done) return Result<void>{done.fault()};
            pins.push_back(*std::move(done));
        }
        return Result<void>{};
    });
    if (!changed) return changed.fault();
    return pins;
}

template <class Pin>
std::string announced(const Pin& pin) {
    const char* const widget = std::is_same_v<Pin, AlarmPin> ? "alarm" : "metric";
    return nameOf({pin.profile, pin.region}) + ": " + visible(spelt(pin), 1000) +
           " is pinned\nNext: tessary-widgets-desktop --add " + widget + " --pin " +
           visible(aws::shellWord(pin.id), 2000) + "\n";
}

/// Says it all, and the status that it comes to.
template <class Pin>
int toldPins(const std::vector<Pin>& pins, const std::vector<std::string>& faults, bool asJSON) {
    for (const auto& fault : faults) complain(fault);
    Pinning pinning{.faults = faults};
    std::string lines;
    for (const auto& pin : pins) {
        pinning.pins.push_back({pin.id, pin.label, pin.profile, pin.region});
        lines += announced(pin);
    }
    const auto json = [&] {
        return foundation::toJSON(pinning, foundation::JSONWriter::Style::indented) + "\n";
    };
    const int status = printed(asJSON ? json() : lines);
    return pins.empty() ? failed : status;
}

template <class Pin>
int pinIn(Session& session, const Pin& pin, bool asJSON) {
    const auto refused = [&](const Fault& fault, std::vector<std::string> faults = {}) {
        faults.insert(faults.begin(), fault.message());
        return toldPins(std::vector<Pin>{}, faults, asJSON);
    };
    const auto places = session.places({pin.profile, pin.region});
    if (!places) return refused(places.fault());
    auto [found, faults] = sought(pin, *places, session);
    const auto pins = added(pin, found, session);
    if (!pins) return refused(pins.fault(), faults);
    if (const auto renewed = session.renew(); !pins->empty() && !renewed)
        faults.push_back(renewed.fault().message());
    return toldPins(*pins, faults, asJSON);
}

// ---- unpin

Fault notPinned(const std::string& id, const Session& session, const Additions& added) {
    std::vector<std::string> ids;
    for (const auto& pin : added.alarms) ids.push_back(pin.id);
    for (const auto& pin : added.metrics) ids.push_back(pin.id);
    const auto& written = session.plan.written;
    const bool isWritten =
        std::ranges::find(written.alarms, id, &AlarmPin::id) != written.alarms.end() ||
        std::ranges::find(written.metrics, id, &MetricPin::id) != written.metrics.end();
    if (isWritten)
        return {"'" + visible(id) + "' stands in " + session.paths.settings.string() +
                ": take it out there"};
    return {"nothing is pinned as '" + visible(id) + "'" +
            visible(foundation::didYouMean(id, ids), 1000)};
}

int unpinIn(Session& session, const std::string& id) {
    const auto changed = additions::change(session.paths.additions, [&](Additions& added) {
        const auto isIt = [&](const auto& pin) { return pin.id == id; };
        if (std::erase_if(added.alarms, isIt) + std::erase_if(added.metrics, isIt) > 0)
            return Result<void>{};
        return Result<void>{notPinned(id, session, added)};
    });
    if (!changed) return complained(changed.fault(), failed);
    const auto renewed = session.renew();
    if (!renewed) return complained(renewed.fault(), failed);
    return printed("'" + visible(id, 1000) + "' is not pinned any more\n");
}

}  // namespace

int pin(const PinCall& call) {
    return inSession(call.given, [&](Session& session) {
        return std::visit([&](const auto& pin) { return pinIn(session, pin, call.json); },
                          call.pin);
    });
}

int unpin(const UnpinCall& call) {
    return inSession(call.given, [&](Session& session) { return unpinIn(session, call.id); });
}

}  // namespace tessary::feed
