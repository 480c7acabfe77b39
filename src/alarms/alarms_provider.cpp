#include "alarms/alarms_provider.h"

#include <utility>

#include "snapshot/reading.h"

namespace tessary::alarms {

AlarmsEntry AlarmsProvider::placeholder(const Context&) const { return {source.clock(), sample()}; }

AlarmsEntry AlarmsProvider::snapshot(const Context& context) const {
    const auto file = snapshot::load<AlarmsSnapshot>(source);
    const bool sampled = !file && context.isPreview;
    const AlarmsDisplay display = sampled ? sample() : AlarmsDisplay{file, source.clock()};
    return {source.clock(), display};
}

widgets::Timeline<AlarmsEntry> AlarmsProvider::timeline(const Context&) const {
    auto file = snapshot::load<AlarmsSnapshot>(source);
    return widgets::minuteTimeline(source.clock(), [file = std::move(file)](Date date) {
        return AlarmsEntry{date, AlarmsDisplay{file, date}};
    });
}

const AlarmsDisplay& AlarmsProvider::sample() const {
    constexpr auto* reason = "Threshold Crossed";
    static const AlarmsDisplay display{AlarmsDisplay::Watching{
        .firing = 4,
        .watched = 6,
        .paused = 0,
        .updated = source.clock() - 40,
        .stale = false,
        .alarms = {{"api-5xx-rate-high", "prod", "us-east-1", {}, reason},
                   {"orders-queue-age", "prod", "eu-west-1", {}, reason},
                   {"ingest-lambda-errors", "shared", "us-east-1", {}, reason}},
    }};
    return display;
}

}  // namespace tessary::alarms
