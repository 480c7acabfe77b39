#include "alarm_pin/alarm_pin_widget_view.h"

#include <gtest/gtest.h>

#include "alarm_pin/alarm_pin.h"
#include "pins/pin_widget.h"
#include "support/golden.h"
#include "support/rendering.h"

namespace tessary::alarm_pin {
namespace {

using Pin = AlarmPinsSnapshot::Pin;

views::View entryView(const pins::PinDisplay<AlarmPinsSnapshot>::Case& display) {
    return pins::pinWidget<AlarmPin>({shownAt, display});
}

Pinned pinned() {
    return {Pin{.id = "i",
                .label = "db high",
                .profile = "a/b prod",
                .region = "eu-west-1",
                .alarmName = "cpu high",
                .state = "ALARM",
                .reason = "Crossed",
                .threshold = 80,
                .unit = "Percent",
                .points = {{0, 1}, {1, 2}},
                .latest = {{1731772840000, 42.3}}},
            shownAt - 300, false};
}

TEST(AlarmPinWidgetView, ShowsEveryState) {
    std::string dump = dumped("not pinned", entryView(pins::NotPinned{})) +
                       dumped("choose", entryView(pins::Choose{})) +
                       dumped("removed", entryView(pins::Removed{})) +
                       dumped("locked", entryView(pinned()), true);
    Pinned state = pinned();
    for (const auto name : {"ALARM", "OK", "INSUFFICIENT_DATA", "alarm", "OK ", ""}) {
        state.pin.state = name;
        dump += dumped("state '" + *state.pin.state + "'", entryView(state));
    }
    state.pin.unit = "Kilograms/Second";
    dump += dumped("wide", entryView(state));
    state.pin.state.reset();
    state.pin.threshold.reset();
    state.pin.reason = "";
    dump += dumped("no state, threshold or reason", entryView(state));
    state.pin.points = {};
    state.pin.latest.reset();
    for (const std::int64_t age : {30, 720, -60}) {
        state.pin.stateUpdatedMs = 1731772840000 - age * 1000;
        dump += dumped("no points, changed " + std::to_string(age) + " s ago", entryView(state));
    }
    state.pin.stateUpdatedMs.reset();
    state.pin.metricName = "";
    dump += dumped("no points of a metric, no change", entryView(state));
    for (int problems = 1; problems < 8; ++problems) {
        state = pinned();
        state.pin.authExpired = (problems & 1) != 0;
        if ((problems & 2) != 0) state.pin.error = "Throttled";
        state.stale = (problems & 4) != 0;
        dump += dumped(std::string{"muted"} + (state.pin.authExpired ? ", expired" : "") +
                           (state.pin.error ? ", error" : "") + (state.stale ? ", stale" : ""),
                       entryView(state));
    }
    expectGolden("alarm_pin_widget.txt", dump);
}

TEST(AlarmPinWidgetView, ShrinksItsStateBeforeItCutsIt) {
    const auto tight =
        rendered(views::View{StateBadge{"ALARM"}}.frame(views::FixedFrame{.width = 40}), smallCard);
    EXPECT_TRUE(textAt(tight, 1).shrink == 0.7 && textAt(tight, 1).lines.at(0).ends_with("…"));
}

}  // namespace
}  // namespace tessary::alarm_pin
