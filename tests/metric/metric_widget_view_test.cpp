#include "metric/metric_widget_view.h"

#include <array>
#include <gtest/gtest.h>
#include <limits>

#include "pins/pin_rendering.h"

namespace tessary::metric {
namespace {

using foundation::ScopedSurroundings;
using pins::expectShrunk;
using pins::expectWithin;
using pins::listed;
using views::DisplayList;
using Case = MetricDisplay::Case;
using Pin = MetricPinsSnapshot::Pin;

constexpr Date now = pins::shownAt;

DisplayList shown(const Case& display, bool medium) {
    return pins::hosted(MetricWidgetEntryView{{now, display}}, medium);
}

Pinned pinned() {
    return {Pin{.id = "i",
                .label = "db CPU",
                .profile = "prod",
                .region = "eu-west-1",
                .stat = "Average",
                .unit = "Percent",
                .points = {{0, 1}, {1, 4}, {2, 2}},
                .latest = {{1731772840000, 42.3}}},
            now - 300, false};
}

std::string value(const std::string& text, const std::string& color = "#E6E8EB") {
    return "\n\"" + text + "\" 28 semibold " + color + " rounded digits limit 1 accent";
}
std::string footer(const std::string& text) {
    return "\n\"" + text + "\" 11 regular #7C838E limit 1";
}
std::string chart(const std::string& color) { return "\narea " + color + "\nline " + color; }
std::string stats(const std::array<std::string, 3>& values) {
    std::string text;
    const std::array<std::string, 3> labels{"Min", "Max", "Avg"};
    for (std::size_t i = 0; i < 3; ++i)
        text += "\n\"" + labels[i] + "\" 10 regular #7C838E\n\"" + values[i] +
                "\" 12 medium #A4AAB4 digits limit 1";
    return text;
}

/// The elements in both sizes, which differ in their order, the place and the statistics.
void expectShown(const Pinned& state, const std::string& value, const std::string& chart,
                 const std::string& footer, const std::string& stats) {
    const std::string label = "\n\"db CPU\" 11 medium #A4AAB4 limit 1 middle";
    const std::string place = "\n\"prod · eu-west-1\" 10 regular #7C838E limit 1 middle";
    EXPECT_EQ(listed(shown(state, false)), label + value + chart + footer);
    EXPECT_EQ(listed(shown(state, true)), label + place + value + footer + chart + stats);
}

TEST(MetricWidgetView, ShowsAFreshMetricAndItsStatistics) {
    const ScopedSurroundings scope{viewSurroundings()};
    Pinned state = pinned();
    const std::string time = footer("Average · 4:00\u202FPM");
    expectShown(state, value("42.3%"), chart("#7FB0FF"), time, stats({"1%", "4%", "2.3%"}));
    state.pin.points = {{2, -1}, {1, -4}, {3, -2.5}};
    expectShown(state, value("42.3%"), chart("#7FB0FF"), time, stats({"-4%", "-1%", "-2.5%"}));
    state.pin.points = {{0, 7}};
    state.pin.unit.reset();
    expectShown(state, value("42.3"), "\nline #24262B", time, stats({"7", "7", "7"}));
    state.pin.points = {};
    expectShown(state, value("42.3"), "\nline #24262B", time, stats({"—", "—", "—"}));
    state.pin.latest.reset();
    expectShown(state, value("—"), "\nline #24262B", footer("No recent data"),
                stats({"—", "—", "—"}));
}

TEST(MetricWidgetView, MutesAMetricAndSaysTheFirstProblem) {
    const ScopedSurroundings scope{viewSurroundings()};
    pins::withProblems(pinned(), [](const Pinned& state, const std::string& line) {
        expectShown(state, value("42.3%", "#7C838E"), chart("#7C838E"), line,
                    stats({"1%", "4%", "2.3%"}));
    });
}

TEST(MetricWidgetView, SaysWhyThereIsNoMetricAndHidesWhileLocked) {
    const ScopedSurroundings scope{viewSurroundings()};
    const auto expect = [](const Case& display, const std::array<std::string, 3>& texts,
                           const std::optional<std::string>& url) {
        pins::expectMessage(MetricWidgetEntryView{{now, display}}, "CloudWatch metric", texts, url);
    };
    expect(pins::NotPinned{},
           {"pin.slash", "Not pinned", "In Tessary, use Add to widget on a CloudWatch chart."},
           std::nullopt);
    expect(pins::Choose{},
           {"hand.tap", "Choose a metric", "Edit the widget to pick one of your pinned metrics."},
           std::nullopt);
    expect(pins::Removed{},
           {"pin.slash", "Not pinned",
            "This metric was removed in Tessary. Edit the widget to choose another."},
           std::nullopt);
    expect(pinned(), {}, "tessary://cloudwatch/metric?pin=i");
}

TEST(MetricWidgetView, OpensItsMetric) {
    for (const auto& [id, escapedText] :
         std::vector<std::pair<std::string, std::string>>{{"", ""},
                                                          {"cpu/prod db", "cpu%2Fprod%20db"},
                                                          {"a:b?c&d=e+f", "a%3Ab%3Fc%26d%3De%2Bf"},
                                                          {"é-._~", "%C3%A9-._~"}}) {
        const Pin pin{.id = id, .label = "l", .profile = "p", .region = "r"};
        EXPECT_EQ((MetricWidgetEntryView{{now, Case{Pinned{pin, now, true}}}}.link()),
                  "tessary://cloudwatch/metric?pin=" + escapedText);
    }
}

TEST(MetricWidgetView, KeepsItsDistances) {
    const ScopedSurroundings scope{viewSurroundings()};
    const DisplayList narrow = shown(pinned(), false);
    const DisplayList wide = shown(pinned(), true);
    const auto frame = [](const DisplayList& list, std::size_t index) {
        return list.elements.at(index).frame;
    };
    // 0 label, 1 value, 2 3 chart, 4 footer
    EXPECT_EQ(frame(narrow, 0).origin, (views::Point{16, 16}));
    EXPECT_EQ(frame(narrow, 4).maxY(), 148);
    for (const std::size_t above : {0U, 1U, 3U})
        EXPECT_EQ(frame(narrow, above + 1).minY() - frame(narrow, above).maxY(), 4);
    EXPECT_EQ(frame(narrow, 3).size.width, 132);
    // 0 label, 1 place, 2 value, 3 footer, 4 5 chart, then three times a label and a value
    EXPECT_EQ(frame(wide, 0).origin, (views::Point{16, 16}));
    EXPECT_EQ(frame(wide, 1).minY(), frame(wide, 0).maxY());
    EXPECT_EQ(frame(wide, 3).maxY(), 148);
    EXPECT_NEAR(frame(wide, 2).midY(), (frame(wide, 1).maxY() + frame(wide, 3).minY()) / 2, 0.5);
    EXPECT_EQ(frame(wide, 4).minX(), 158);
    EXPECT_EQ(frame(wide, 4).maxX(), 328);
    EXPECT_EQ(frame(wide, 4).minY(), 16);
    EXPECT_EQ(frame(wide, 6).minY() - frame(wide, 4).maxY(), 6);
    for (std::size_t cell = 0; cell < 3; ++cell) {
        const auto left = 158 + 170.0 / 3 * static_cast<double>(cell);
        EXPECT_NEAR(frame(wide, 6 + 2 * cell).minX(), left, 0.5);
        EXPECT_EQ(frame(wide, 7 + 2 * cell).minX(), frame(wide, 6 + 2 * cell).minX());
        EXPECT_EQ(frame(wide, 7 + 2 * cell).minY() - frame(wide, 6 + 2 * cell).maxY(), 1);
        EXPECT_EQ(frame(wide, 7 + 2 * cell).maxY(), 148);
    }
}

TEST(MetricWidgetView, KeepsTextsOfAnyLengthInTheirColumns) {
    const ScopedSurroundings scope{viewSurroundings()};
    pins::withTextsOfAnyLength([](const std::string& text) {
        Pinned state = pinned();
        state.pin.unit = state.pin.stat = state.pin.profile = text;
        state.pin.label = "[" + text + "]";
        state.pin.latest->v = 1.23456789012e20;  // twelve digits
        if (text.size() % 4 < 2) state.pin.error = text;
        const DisplayList narrow = shown(state, false);
        expectWithin(narrow, 16, 148);
        expectShrunk(textAt(narrow, 1), 0.5);
        const DisplayList list = shown(state, true);
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
        for (const std::size_t whole : {0U, 1U}) expectShrunk(textAt(list, whole), 1);
        expectShrunk(textAt(list, history - 1), 1);
    });
}

TEST(MetricWidgetView, WritesTimesForTheUserAndAnyThereIs) {
    Pinned state = pinned();
    for (const auto& [locale, time] :
         std::vector<std::pair<std::string, std::string>>{{"en_US", "4:00\u202FPM"},
                                                          {"de_DE", "16:00"},
                                                          {"ja_JP", "16:00"},
                                                          {"ar_EG", "٤:٠٠ م"}}) {
        const ScopedSurroundings scope{viewSurroundings(locale)};
        EXPECT_EQ(textAt(shown(state, true), 3).text, "Average · " + time);
    }
    const ScopedSurroundings scope{viewSurroundings()};
    for (const auto time :
         {std::numeric_limits<std::int64_t>::min(), std::numeric_limits<std::int64_t>::max()}) {
        state.pin.latest = {time, -1e308};
        state.pin.points = {{0, 1e308}, {1, 1e308}, {2, -1e308}};
        const DisplayList list = shown(state, true);
        EXPECT_TRUE(textAt(list, 3).text.starts_with("Average · ")) << listed(list);
        expectWithin(list, 16, 328);
        expectWithin(shown(state, false), 16, 148);
    }
}

}  // namespace
}  // namespace tessary::metric
