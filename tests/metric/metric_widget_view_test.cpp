#include "metric/metric_widget_view.h"

#include <gtest/gtest.h>

#include "support/golden.h"
#include "support/rendering.h"

namespace tessary::metric {
namespace {

using system::ScopedSurroundings;
using Pin = MetricPinsSnapshot::Pin;

MetricWidgetEntryView entryView(const MetricDisplay::Case& display) { return {{shownAt, display}}; }

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
    const ScopedSurroundings scope{viewSurroundings()};
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

TEST(MetricWidgetView, KeepsTextsOfAnyLengthInTheirColumns) {
    const ScopedSurroundings scope{viewSurroundings()};
    withTextsOfAnyLength([](const std::string& text) {
        Pinned state = pinned();
        state.pin.unit = state.pin.stat = state.pin.profile = text;
        state.pin.label = "[" + text + "]";
        state.pin.latest->v = 1.23456789012e20;  // twelve digits
        if (text.size() % 4 < 2) state.pin.error = text;
        const views::DisplayList narrow = hosted(entryView(state), false);
        expectWithin(narrow, 16, 148);
        expectShrunk(textAt(narrow, 1), 0.5);
        const views::DisplayList list = hosted(entryView(state), true);
        const std::size_t history = state.pin.error ? 5 : 4;
        ASSERT_EQ(list.elements.size(), history + 8);
        expectWithin(list, 16, 144, 0, history);
        expectWithin(list, 158, 328, history);
        EXPECT_TRUE(textAt(list, 0).lines.at(0).starts_with("[")) << text;
        EXPECT_TRUE(textAt(list, 0).lines.at(0).ends_with("]")) << text;
        EXPECT_TRUE(textAt(list, 1).lines.at(0).ends_with("eu-west-1")) << text;
        EXPECT_TRUE(textAt(list, 2).text.starts_with("123456789012.0B "));
        expectShrunk(textAt(list, 2), 0.5);
        for (const std::size_t stat : {3U, 5U, 7U}) {
            expectShrunk(textAt(list, history + stat), 0.7);
            EXPECT_EQ(textAt(list, history + stat - 1).shrink, 1);
        }
        for (const std::size_t whole : {std::size_t{0}, std::size_t{1}, history - 1})
            expectShrunk(textAt(list, whole), 1);
    });
}

}  // namespace
}  // namespace tessary::metric
