#include "alarm_pin/alarm_pin_widget_view.h"

#include <array>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>

#include "pins/pin_rendering.h"

namespace tessary::alarm_pin {
namespace {

using foundation::ScopedSurroundings;
using pins::expectWithin;
using pins::listed;
using views::DisplayList;
using Case = AlarmPinDisplay::Case;
using Pin = AlarmPinsSnapshot::Pin;

constexpr Date now = pins::shownAt;

DisplayList shown(const Case& display, bool medium) {
    return pins::hosted(AlarmPinWidgetEntryView{{now, display}}, medium);
}

Pinned pinned() {
    return {Pin{.id = "i",
                .label = "db high",
                .profile = "prod",
                .region = "eu-west-1",
                .alarmName = "name",
                .state = "ALARM",
                .reason = "Crossed",
                .threshold = 80,
                .unit = "Percent",
                .points = {{0, 1}, {1, 2}},
                .latest = {{1731772840000, 42.3}}},
            now - 300, false};
}

const std::string name = "\n\"db high\" 12 semibold #E6E8EB limit 2 middle";
std::string badge(const std::string& text, const std::string& color) {
    return "\ncircle " + color + "\n\"" + text + "\" 15 semibold " + color +
           " rounded limit 1 accent";
}
std::string chart(const std::string& color, bool threshold = true) {
    return "\narea " + color + "\nline " + color + (threshold ? "\ndashes #F2716B" : "");
}
std::string footer(const std::string& text) {
    return "\n\"" + text + "\" 11 regular #7C838E limit 1";
}
const std::string reason = "\n\"Crossed\" 10 regular #7C838E limit 2";

/// The elements in both sizes, which differ in their order and in the reason.
void expectShown(const Pinned& state, const std::string& badge, const std::string& chart,
                 const std::string& footer) {
    EXPECT_EQ(listed(shown(state, false)), name + badge + chart + footer);
    const bool hasReason = !state.pin.reason.empty();
    EXPECT_EQ(listed(shown(state, true)),
              name + badge + footer + chart + (hasReason ? reason : ""));
}

TEST(AlarmPinWidgetView, ShowsEveryStateOfAFreshAlarm) {
    const ScopedSurroundings scope{viewSurroundings()};
    const std::string value = "42.3% / 80% · 4:00\u202FPM";
    Pinned state = pinned();
    expectShown(state, badge("In alarm", "#F2716B"), chart("#F2716B"), footer(value));
    state.pin.state = "OK";
    expectShown(state, badge("OK", "#4CC790"), chart("#7FB0FF"), footer(value));
    state.pin.state = "INSUFFICIENT_DATA";
    expectShown(state, badge("Insufficient data", "#7C838E"), chart("#7FB0FF"), footer(value));
    state.pin.state = "alarm";
    state.pin.reason = "";
    expectShown(state, badge("Unknown", "#7C838E"), chart("#7FB0FF"), footer(value));
    state.pin.state.reset();
    state.pin.threshold.reset();
    expectShown(state, badge("Unknown", "#7C838E"), chart("#7FB0FF", false),
                footer("42.3% · 4:00\u202FPM"));
    state.pin.points = {};
    state.pin.latest.reset();
    for (const auto& [age, text] : std::vector<std::pair<std::int64_t, std::string>>{
             {30, "Since just now"}, {720, "Since 12 min. ago"}, {-60, "Since just now"}}) {
        state.pin.stateUpdatedMs = 1731772840000 - age * 1000;
        expectShown(state, badge("Unknown", "#7C838E"), "", footer(text));
    }
    state.pin.stateUpdatedMs.reset();
    state.pin.metricName = "";
    expectShown(state, badge("Unknown", "#7C838E"), "\nline #24262B", footer("prod · eu-west-1"));
}

TEST(AlarmPinWidgetView, MutesAnAlarmAndSaysTheFirstProblem) {
    const ScopedSurroundings scope{viewSurroundings()};
    pins::withProblems(pinned(), [](const Pinned& state, const std::string& line) {
        expectShown(state, badge("In alarm", "#7C838E"), chart("#7C838E"), line);
    });
}

TEST(AlarmPinWidgetView, SaysWhyThereIsNoAlarmAndHidesWhileLocked) {
    const ScopedSurroundings scope{viewSurroundings()};
    const auto expect = [](const Case& display, const std::array<std::string, 3>& texts,
                           const std::optional<std::string>& url) {
        pins::expectMessage(AlarmPinWidgetEntryView{{now, display}}, "CloudWatch alarm", texts,
                            url);
    };
    expect(pins::NotPinned{},
           {"pin.slash", "Not pinned", "In Tessary, open an alarm and use Add to widget."},
           "tessary://alarms");
    expect(pins::Choose{},
           {"hand.tap", "Choose an alarm", "Edit the widget to pick one of your pinned alarms."},
           "tessary://alarms");
    expect(pins::Removed{},
           {"pin.slash", "Not pinned",
            "This alarm was removed in Tessary. Edit the widget to choose another."},
           "tessary://alarms");
    expect(pinned(), {}, "tessary://alarms/name?profile=prod&region=eu-west-1");
}

TEST(AlarmPinWidgetView, OpensItsAlarm) {
    const auto link = [](const Pin& pin) {
        return AlarmPinWidgetEntryView{{now, Case{Pinned{pin, now, true}}}}.link();
    };
    EXPECT_EQ(link({}), "tessary://alarms/?profile=&region=");
    EXPECT_EQ(
        link({.label = "l", .profile = "a b", .region = "eu-west-1", .alarmName = "cpu high/prod"}),
        "tessary://alarms/cpu%20high%2Fprod?profile=a%20b&region=eu-west-1");
    for (int byte = 0; byte < 256; ++byte) {
        const std::string text(1, static_cast<char>(byte));
        std::array<char, 4> escaped{};
        std::snprintf(escaped.data(), escaped.size(), "%%%02X", byte);
        const bool plain = byte < 128 && (std::isalnum(byte) != 0 ||
                                          (byte != 0 && std::strchr("-._~", byte) != nullptr));
        const std::string escapedText = plain ? text : escaped.data();
        EXPECT_EQ(link({.profile = text + "p", .region = text + "r", .alarmName = text}),
                  "tessary://alarms/" + escapedText + "?profile=" + escapedText +
                      "p&region=" + escapedText + "r");
    }
}

TEST(AlarmPinWidgetView, KeepsItsDistances) {
    const ScopedSurroundings scope{viewSurroundings()};
    Pinned state = pinned();
    state.pin.threshold.reset();
    for (const bool medium : {false, true}) {
        const DisplayList list = shown(state, medium);
        const auto frame = [&](std::size_t index) { return list.elements.at(index).frame; };
        // 0 name, 1 dot, 2 state, then 3 4 chart, 5 footer or 3 footer, 4 5 chart, 6 reason
        const std::size_t foot = medium ? 3 : 5;
        const views::Rect plot = frame(medium ? 4 : 3);
        EXPECT_EQ(frame(0).origin, (views::Point{16, 16}));
        EXPECT_EQ(frame(1).size, (views::Size{7, 7}));
        EXPECT_EQ(frame(2).minX() - frame(1).maxX(), 5);
        EXPECT_NEAR(frame(1).midY(), frame(2).midY(), 0.5);
        EXPECT_EQ(frame(2).minY() - frame(0).maxY(), 4);
        EXPECT_EQ(frame(foot).maxY(), 148);
        EXPECT_EQ(plot.minX(), medium ? 16 + 128 + 14 : 16);
        EXPECT_EQ(plot.maxX(), medium ? 328 : 148);
        EXPECT_EQ(plot.minY(), medium ? 16 : frame(2).maxY() + 4);
        EXPECT_EQ(plot.maxY(), frame(medium ? 6 : foot).minY() - (medium ? 6 : 4));
    }
    const DisplayList tight = rendered(
        views::View{StateBadge{pinned()}}.frame(views::FixedFrame{.width = 40}), smallCard);
    EXPECT_EQ(textAt(tight, 1).shrink, 0.7);
    EXPECT_TRUE(textAt(tight, 1).lines.at(0).ends_with("…"));
}

TEST(AlarmPinWidgetView, KeepsTextsOfAnyLengthInTheirColumns) {
    const ScopedSurroundings scope{viewSurroundings()};
    pins::withTextsOfAnyLength([](const std::string& text) {
        for (const bool problem : {false, true}) {
            Pinned state = pinned();
            state.pin.label = "[" + text + "]";
            state.pin.reason = state.pin.profile = text;
            state.pin.latest.reset();
            if (problem) state.pin.error = text;
            expectWithin(shown(state, false), 16, 148);
            const DisplayList list = shown(state, true);
            const std::size_t history = problem ? 5 : 4;
            ASSERT_EQ(list.elements.size(), history + 4);
            expectWithin(list, 16, 144, 0, history);
            expectWithin(list, 158, 328, history);
            const auto label = textAt(list, 0);
            EXPECT_LE(label.lines.size(), 2);
            EXPECT_TRUE(label.lines.front().starts_with("[")) << label.text;
            EXPECT_TRUE(label.lines.back().ends_with("]")) << label.lines.back();
            EXPECT_EQ(label.shrink, 1);
            EXPECT_LE(textAt(list, history + 3).lines.size(), 2);
            EXPECT_EQ(textAt(list, history + 3).shrink, 1);
            const auto foot = textAt(list, history - 1);
            pins::expectShrunk(foot, problem ? 1 : 0.85);
        }
    });
}

TEST(AlarmPinWidgetView, WritesValuesAndTimesForTheUser) {
    const auto detail = [](const Pin& pin) { return AlarmFooter{{pin, now, false}, now}.detail(); };
    Pin pin = pinned().pin;
    for (const auto& [locale, text] :
         std::vector<std::pair<std::string, std::string>>{{"en_US", "42.3% / 80% · 4:00\u202FPM"},
                                                          {"de_DE", "42.3% / 80% · 16:00"},
                                                          {"ja_JP", "42.3% / 80% · 16:00"},
                                                          {"ar_EG", "42.3% / 80% · ٤:٠٠ م"}}) {
        const ScopedSurroundings scope{viewSurroundings(locale)};
        EXPECT_EQ(detail(pin), text);
    }
    const ScopedSurroundings scope{viewSurroundings()};
    pin.unit = "Bytes";
    pin.threshold = 1.5e9;
    EXPECT_TRUE(detail(pin).starts_with("42 bytes / 1.5 GB · ")) << detail(pin);
    for (const auto time :
         {std::numeric_limits<std::int64_t>::min(), std::numeric_limits<std::int64_t>::max()}) {
        pin.latest = {time, 1.23456789012e20};
        pin.unit.reset();
        EXPECT_TRUE(detail(pin).starts_with("123456789012.0B / ")) << detail(pin);
        expectWithin(shown(Pinned{pin, now, false}, false), 16, 148);
        pin.latest.reset();
        pin.stateUpdatedMs = time;
        EXPECT_TRUE(detail(pin).starts_with("Since ")) << detail(pin);
        expectWithin(shown(Pinned{pin, now, false}, true), 16, 328);
    }
}

}  // namespace
}  // namespace tessary::alarm_pin
