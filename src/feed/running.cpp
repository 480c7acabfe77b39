#include "feed/running.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <poll.h>
#include <utility>

namespace tessary::feed {

using foundation::Result;

namespace {

std::string faultOf(const Result<void>& result) { return result ? "" : result.fault().message(); }

}  // namespace

Feed::Feed(Paths paths, Plan plan, store::Store store, aws::KeySources sources)
    : paths_(std::move(paths)),
      plan_(std::move(plan)),
      store_(std::move(store)),
      sources_(std::move(sources)),
      asker_(sources_),
      memory_(store::remembered(paths_.memory)) {}

bool Feed::round() {
    const auto made = asker_.round(plan_, paths_, memory_);
    if (EndSignals::came()) return false;  // what was cut off tells nothing of the targets
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

void Feed::runUntilEnd(const EndSignals& end) {
    system::PathWatch watch{
        {paths_.settings, paths_.additions, sources_.config, sources_.credentials}};
    reload();  // what has changed since it was read
    constexpr double mostJitter = 0.1;
    double due = aws::steadySeconds() + aws::anyShare() * mostJitter * interval();
    while (!EndSignals::came()) {
        const double now = aws::steadySeconds();
        if (now >= due) {
            due = now + interval();
            round();
        } else if (hasChanged(watch, end, due - now)) {
            due = std::min(due, aws::steadySeconds());
        }
    }
}

/// Waits so many seconds at most; whether something else is to be watched now.
bool Feed::hasChanged(system::PathWatch& watch, const EndSignals& end, double seconds) {
    pollfd events[] = {{end.descriptor(), POLLIN, 0}, {watch.descriptor(), POLLIN, 0}};
    const int count = ::poll(events, std::size(events),
                             static_cast<int>(std::ceil(std::max(seconds, 0.0) * 1000)));
    return count > 0 && events[1].revents != 0 && watch.takeEvents() && reload();
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
