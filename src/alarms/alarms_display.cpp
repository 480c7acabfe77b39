#include "alarms/alarms_display.h"

#include <algorithm>

#include "snapshot/freshness.h"

namespace tessary::alarms {

namespace {

AlarmsDisplay::Case derived(const std::optional<AlarmsSnapshot>& snapshot, Date now) {
    if (!snapshot) return AlarmsDisplay::Unavailable{};
    if (snapshot->state != "watching") return AlarmsDisplay::NotWatching{};

    const Date updated = Date::fromMilliseconds(snapshot->updatedMs);
    const auto paused =
        std::count_if(snapshot->targets.begin(), snapshot->targets.end(),
                      [](const snapshot::Target& target) { return target.authExpired; });
    return AlarmsDisplay::Watching{
        .firing = snapshot->firing,
        .watched = static_cast<std::int64_t>(snapshot->targets.size()),
        .paused = paused,
        .updated = updated,
        .stale = snapshot::isStale(updated, snapshot->intervalSeconds, leastStaleLimit, now),
        .alarms = snapshot->topAlarms,
    };
}

struct CaseWriter {
    foundation::JSONWriter& json;

    void operator()(const AlarmsDisplay::Watching& state) const {
        json.member("case", "watching").members(state);
    }
    void operator()(const AlarmsDisplay::Unavailable&) const { json.member("case", "unavailable"); }
    void operator()(const AlarmsDisplay::NotWatching&) const { json.member("case", "notWatching"); }
};

}  // namespace

void writeJSON(foundation::JSONWriter& json, const AlarmsDisplay& display) {
    json.object([&] { std::visit(CaseWriter{json}, display.value()); });
}

AlarmsDisplay::AlarmsDisplay(const std::optional<AlarmsSnapshot>& snapshot, Date now)
    : value_(derived(snapshot, now)) {}

}  // namespace tessary::alarms
