#include "alarms/alarms_widget_view.h"

#include <gtest/gtest.h>
#include <limits>

#include "support/golden.h"
#include "support/rendering.h"

namespace tessary::alarms {
namespace {

using Watching = AlarmsDisplay::Watching;

constexpr auto most = std::numeric_limits<std::int64_t>::max();
constexpr auto least = std::numeric_limits<std::int64_t>::min();

views::View entryView(const AlarmsDisplay::Case& display) {
    return alarmsWidget({shownAt, display});
}

Watching watching(std::int64_t firing, bool stale, std::size_t alarms, std::int64_t paused = 0) {
    return {.firing = firing,
            .watched = 1234,
            .paused = paused,
            .updated = shownAt - 300,
            .stale = stale,
            .alarms = std::vector<Alarm>(alarms, {"queue", "prod", "eu-west-1", {}, ""})};
}

TEST(AlarmsWidgetView, ShowsEveryState) {
    std::string dump = dumped("unavailable", entryView(AlarmsDisplay::Unavailable{})) +
                       dumped("not watching", entryView(AlarmsDisplay::NotWatching{})) +
                       dumped("locked", entryView(watching(4, true, 3)), true);
    const auto add = [&](const std::string& heading, const Watching& state) {
        dump +=
            dumped(heading + ", alarms: " + std::to_string(state.alarms.size()), entryView(state));
    };
    for (const bool stale : {false, true})
        for (const std::int64_t firing : {0, 1, 12, -1})
            for (const std::size_t alarms : {0U, 2U})
                add(std::to_string(firing) + (stale ? " firing, stale" : " firing, fresh"),
                    watching(firing, stale, alarms, firing == 1 ? 1 : 0));
    for (const auto firing : {std::int64_t{3}, std::int64_t{4}, most, least})
        for (const std::size_t alarms : {3U, 5U})
            add(std::to_string(firing) + " firing, 2 paused", watching(firing, true, alarms, 2));
    views::EvenTypesetter even;
    const views::Surface low{{164, 60}, views::EdgeInsets::all(16), 22, 2};
    dump += "== on a card too low\n" +
            Dump{rendered(Summary{4, {1234, 0, shownAt - 300, false}}, low, {.now = shownAt}, even)}
                .text();
    expectGolden("alarms_widget.txt", dump);
}

}  // namespace
}  // namespace tessary::alarms
