#include <gtest/gtest.h>

#include "metric/metric_pin.h"
#include "pins/pin_widget.h"
#include "support/golden.h"
#include "support/rendering.h"

namespace tessary::metric {
namespace {

using Pin = MetricPinsSnapshot::Pin;

views::View entryView(const pins::PinDisplay<MetricPinsSnapshot>::Case& display) {
    return pins::pinWidget<MetricPin>({shownAt, display});
}

Pinned pinned() {
    return {Pin{.id = "a:b/c d",
                .label = "db CPU",
                .profile = "prod",
                .region = "eu-west-1",
                .stat = "Average",
                .unit = "Percent",
                .points = {{0, 1}, {1, 4}, {2, 2}},
                .latest = {{1731772840000, 42.3}}},
            shownAt - 300, false};
}

TEST(MetricWidgetView, ShowsEveryState) {
    std::string dump = dumped("not pinned", entryView(pins::NotPinned{})) +
                       dumped("choose", entryView(pins::Choose{})) +
                       dumped("removed", entryView(pins::Removed{})) +
                       dumped("locked", entryView(pinned()), true) +
                       dumped("three points", entryView(pinned()));
    Pinned state = pinned();
    state.pin.points = {{2, -1}, {1, -4}, {3, -2.5}};
    dump += dumped("negative, the second earliest", entryView(state));
    state.pin.points = {{0, 7}};
    state.pin.unit.reset();
    dump += dumped("one point, no unit", entryView(state));
    state.pin.points = {};
    state.pin.latest.reset();
    dump += dumped("no points", entryView(state));
    state = pinned();
    state.pin.stat = "a long statistic";
    state.pin.unit = "Bytes/Second";
    state.pin.points = {{0, 54.9e6}, {1, 39.1e6}, {2, 123.4e6}};
    dump += dumped("wide", entryView(state));
    // Which problem counts of several is the same as for alarms.
    state = pinned();
    state.stale = true;
    dump += dumped("stale", entryView(state));
    state.pin.error = "Throttled";
    dump += dumped("error", entryView(state));
    state.pin.authExpired = true;
    dump += dumped("expired", entryView(state));
    expectGolden("metric_widget.txt", dump);
}

}  // namespace
}  // namespace tessary::metric
