#include "feed/running.h"

#include <algorithm>
#include <poll.h>
#include <utility>

#include "feed/status.h"

namespace tessary::feed {

using foundation::Result;

namespace {

std::string faultOf(const Result<void>& result) { return result ? "" : result.fault().message(); }

/// Something was not answered that would be by now. Who has to sign in is not among it.
bool hasFailures(const store::Memory& memory) {
    const auto target = [](const rounds::KnownTarget& each) {
        return each.fault.has_value() && !each.authExpired;
    };
    const auto pin = [](const auto& each) { return each.failures > 0 && !each.shown.authExpired; };
    return std::ranges::any_of(memory.targets, target) ||
           std::ranges::any_of(memory.alarmPins, pin) ||
           std::ranges::any_of(memory.metricPins, pin);
}

}  // namespace

Feed::Feed(Paths paths, Plan plan, store::Store store, aws::KeySources sources,
           aws::Patience patience)
    : paths_(std::move(paths)),
      plan_(std::move(plan)),
      store_(std::move(store)),
      sources_(std::move(sources)),
      asker_(sources_, std::move(patience)),
      memory_(store::remembered(paths_.memory)) {}

bool Feed::round() {
    auto made = asker_.round(plan_, paths_, memory_);
    if (EndSignals::came()) return false;  // what was cut off tells nothing of the targets
    if (outside_ != nullptr) tell(made);
    memory_ = made.memory;
    notes_.tellTargets(memory_);
    notes_.tellFault("watched", plan_.isIdle() ? whyNothing(plan_, paths_) : "");
    const auto written = made.write(store_);
    notes_.tellFault("file", faultOf(written));
    notes_.tellFault("memory", faultOf(store_.remember(memory_)));
    if (!made.alarms && made.calls > 0)
        notes_.tellFault("nothing written", whyNothing(plan_, paths_));
    return made.hasFiles() && written && made.isAsked;
}

/// What was said is remembered even where nobody wants to hear it.
void Feed::tell(Made& made) {
    const auto& targets = plan_.watched.targets;
    const auto telling = notices::tell(memory_.said, targets, made.outcomes, nowMs());
    made.memory.said = telling.said;
    if (plan_.settings.notify) outside_->show(telling);
}

void Feed::runUntilEnd(const EndSignals& end) {
    system::PathWatch watch{
        {paths_.settings, paths_.additions, sources_.config, sources_.credentials}};
    reload();  // what has changed since it was read
    constexpr double mostJitter = 0.1;
    rounds::Schedule schedule{signs::wakefulSeconds() + aws::anyShare() * mostJitter * interval()};
    Outside outside{schedule, notes_};
    outside_ = &outside;
    outside.begin();
    while (!EndSignals::came()) {
        pollfd events[] = {{end.descriptor(), POLLIN, 0}, {watch.descriptor(), POLLIN, 0}};
        outside.wait(events);
        if (events[1].revents != 0 && watch.takeEvents() && reload())
            schedule.hasten(signs::wakefulSeconds());
        if (signs::wakefulSeconds() < schedule.due()) continue;
        schedule.begin(signs::wakefulSeconds(), interval());
        round();
        schedule.end(signs::wakefulSeconds(), hasFailures(memory_));
        outside.tend(plan_.isIdle() ? "nothing is watched" : summaryOf(memory_));
    }
    outside_ = nullptr;
}

/// Wrong settings leave the old ones.
bool Feed::reload() {
    auto plan = loadPlan(paths_, sources_);
    notes_.tellFault("settings", plan ? "" : plan.fault().message());
    if (!plan) return false;
    const auto before = std::exchange(plan_, *std::move(plan));
    return plan_.settings != before.settings || plan_.watched != before.watched;
}

}  // namespace tessary::feed
