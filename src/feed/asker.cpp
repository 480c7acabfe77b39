#include "feed/asker.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <limits>
#include <set>
#include <utility>

#include "feed/questions.h"
#include "feed/signals.h"
#include "platform/foundation/date.h"
#include "platform/system/child.h"
#include "platform/system/files.h"

namespace tessary::feed {

namespace fs = std::filesystem;
using rounds::KnownTarget;
using snapshot::AlarmsSnapshot;
using store::Memory;

namespace {

/// Nothing is waited for any more once the feed is to end.
aws::Patience untilTheEnd(aws::Patience patience) {
    patience.clock = [clock = patience.clock] {
        return EndSignals::came() ? std::numeric_limits<double>::infinity() : clock();
    };
    return patience;
}

aws::KeyRing::Run runWithin(double seconds) {
    return [time = std::chrono::milliseconds{std::llround(seconds * 1000)}](system::Errand errand) {
        errand.time = time;
        return system::runChild(errand);
    };
}

KnownTarget knownOf(const Memory& memory, const rounds::Target& target) {
    const auto known = std::ranges::find_if(memory.targets, [&](const KnownTarget& each) {
        return each.profile == target.profile && each.region == target.region;
    });
    if (known != memory.targets.end()) return *known;
    return {.profile = target.profile, .region = target.region, .askedMs = nowMs()};
}

void sayRemedy(rounds::Outcome& outcome, const std::string& remedy) {
    if (auto* const expired = std::get_if<rounds::SignInExpired>(&outcome))
        if (!remedy.empty()) expired->words += "; " + remedy;
}

/// One that says that nothing is watched where one stands that says otherwise.
std::optional<AlarmsSnapshot> offFile(const Paths& paths, std::int64_t interval) {
    const auto off = rounds::nothingWatched(interval, nowMs());
    const auto text = system::readFile(paths.alarms());
    if (!text) return std::nullopt;
    const auto standing = foundation::decodeJSON<AlarmsSnapshot>(*text);
    if (standing && standing->state == off.state) return std::nullopt;
    return off;
}

/// The profiles whose keys were taken somewhere.
std::set<std::string> answered(const std::vector<rounds::Target>& targets,
                               const std::vector<rounds::Outcome>& outcomes) {
    std::set<std::string> profiles;
    for (std::size_t at = 0; at < targets.size(); ++at)
        if (std::holds_alternative<rounds::Answered>(outcomes[at]))
            profiles.insert(targets[at].profile);
    return profiles;
}

/// None where nothing is pinned and no file says otherwise.
template <class Pin>
std::optional<snapshot::PinsSnapshot<Pin>> fileOf(const std::vector<rounds::KnownPin<Pin>>& pins,
                                                  std::int64_t interval, const Paths& paths) {
    using File = snapshot::PinsSnapshot<Pin>;
    std::error_code ignored;
    if (pins.empty() && !fs::exists(paths.container / snapshot::pathOf(File::fileName), ignored))
        return std::nullopt;
    return rounds::pinsFile(pins, interval, nowMs());
}

}  // namespace

std::int64_t nowMs() { return std::llround(foundation::wallClock().seconds * 1000); }

foundation::Result<void> Made::write(const store::Store& store) const {
    const auto put = [&](const auto& file) {
        return file ? store.write(*file) : foundation::Result<void>{};
    };
    return put(alarms).andThen(
        [&] { return put(alarmPins).andThen([&] { return put(metricPins); }); });
}

Asker::Asker(const aws::KeySources& sources, aws::Patience patience)
    : ring_(sources, foundation::wallClock, runWithin(patience.program)),
      client_(untilTheEnd(std::move(patience))) {}

Made Asker::round(const Plan& plan, const Paths& paths, const Memory& before) {
    const auto& targets = plan.watched.targets;
    const auto interval = plan.settings.interval;
    Made made;
    for (const auto& target : targets) made.memory.targets.push_back(knownOf(before, target));
    Questions questions{ring_, client_, plan.surroundings, plan.watched};
    rounds::AlarmsRound round{targets, questions.forAlarms()};
    rounds::PinsRound pins{
        plan.settings, {before.alarmPins, before.metricPins}, nowMs(), questions.forPins()};
    round.start();
    pins.start();
    client_.run();
    auto outcomes = round.outcomes();
    for (std::size_t at = 0; at < targets.size(); ++at) {
        sayRemedy(outcomes[at], plan.surroundings.remedyOf(targets[at].profile));
        auto& target = made.memory.targets[at];
        target = rounds::learned(std::move(target), outcomes[at], nowMs());
    }
    made.memory.said = before.said;
    made.memory.ignored = round.ignored();
    made.alarms = targets.empty() ? offFile(paths, interval)
                                  : rounds::alarmsFile(made.memory.targets, interval);
    pins.trust(answered(targets, outcomes));
    auto known = pins.known();
    made.alarmPins = fileOf(known.alarms, interval, paths);
    made.metricPins = fileOf(known.metrics, interval, paths);
    made.memory.alarmPins = std::move(known.alarms);
    made.memory.metricPins = std::move(known.metrics);
    made.outcomes = std::move(outcomes);
    made.calls = questions.count();
    made.isAsked = !plan.isIdle() && !questions.areInVain();
    return made;
}

template <class Query>
std::vector<rounds::Finding<typename rounds::Sought<Query>::Item>> Asker::search(
    const Surroundings& around, const std::vector<rounds::Place>& places, const Query& query) {
    const Watched none;
    Questions questions{ring_, client_, around, none};
    rounds::Search<Query> search{places, query, questions.forPins()};
    search.start();
    client_.run();
    auto findings = search.findings();
    for (auto& finding : findings) {
        const auto remedy = around.remedyOf(finding.place.profile);
        if (finding.authExpired && !remedy.empty()) *finding.fault += "; " + remedy;
    }
    return findings;
}

template std::vector<rounds::Finding<aws::DescribedAlarm>> Asker::search(
    const Surroundings&, const std::vector<rounds::Place>&, const aws::AlarmsQuery&);
template std::vector<rounds::Finding<aws::Metric>> Asker::search(const Surroundings&,
                                                                 const std::vector<rounds::Place>&,
                                                                 const aws::MetricsQuery&);

}  // namespace tessary::feed
