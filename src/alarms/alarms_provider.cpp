#include "alarms/alarms_provider.h"

#include "platform/system/surroundings.h"
#include "platform/widgets/minute_timeline.h"
#include "snapshot/snapshot_store.h"

namespace tessary::alarms {

using snapshot::SnapshotStore;
using system::surroundings;
using widgets::Timeline;

namespace {

Date currentTime() { return surroundings().clock(); }

}  // namespace

AlarmsEntry AlarmsProvider::placeholder(const Context&) const {
    return {currentTime(), AlarmsPreviewData::firing()};
}

void AlarmsProvider::getSnapshot(const Context& context,
                                 const std::function<void(AlarmsEntry)>& completion) const {
    const auto snapshot = SnapshotStore::loadAlarms();
    const bool sampled = !snapshot && context.isPreview;
    const AlarmsDisplay display =
        sampled ? AlarmsPreviewData::firing() : AlarmsDisplay{snapshot, currentTime()};
    completion({currentTime(), display});
}

void AlarmsProvider::getTimeline(
    const Context&, const std::function<void(Timeline<AlarmsEntry>)>& completion) const {
    const auto snapshot = SnapshotStore::loadAlarms();
    completion(widgets::minuteTimeline(currentTime(), [&](Date date) {
        return AlarmsEntry{date, AlarmsDisplay{snapshot, date}};
    }));
}

Date AlarmsPreviewData::now() {
    static const Date date = currentTime();
    return date;
}

const AlarmsDisplay& AlarmsPreviewData::firing() {
    constexpr auto* reason = "Threshold Crossed";
    static const AlarmsDisplay display{AlarmsDisplay::Watching{
        .firing = 4,
        .watched = 6,
        .paused = 0,
        .updated = now() - 40,
        .stale = false,
        .alarms = {{"api-5xx-rate-high", "prod", "us-east-1", {}, reason},
                   {"orders-queue-age", "prod", "eu-west-1", {}, reason},
                   {"ingest-lambda-errors", "shared", "us-east-1", {}, reason}},
    }};
    return display;
}

}  // namespace tessary::alarms
