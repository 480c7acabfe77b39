#include "alarms/alarms_widget_view.h"

#include <gtest/gtest.h>
#include <limits>

#include "presentation/palette.h"
#include "support/rendering.h"

namespace tessary::alarms {
namespace {

using foundation::ScopedSurroundings;
using views::DisplayList;
using views::WidgetFamily;
using Case = AlarmsDisplay::Case;
using Watching = AlarmsDisplay::Watching;

constexpr auto most = std::numeric_limits<std::int64_t>::max();
constexpr auto least = std::numeric_limits<std::int64_t>::min();
constexpr auto small = WidgetFamily::systemSmall;
constexpr auto medium = WidgetFamily::systemMedium;

DisplayList shown(const Case& display, WidgetFamily family, double scale = 2, bool locked = false) {
    views::Surface card = family == medium ? mediumCard : smallCard;
    card.scale = scale;
    const views::Environment environment{.redaction = {.placeholder = locked},
                                         .widgetFamily = family};
    return rendered(AlarmsWidgetEntryView{{{1731772840}, display}}, card, environment);
}

Watching watching(std::int64_t firing, bool stale = false, std::size_t alarms = 0) {
    return {.firing = firing,
            .watched = 1234,
            .updated = Date{1731772840} - 300,
            .stale = stale,
            .alarms = std::vector<Alarm>(alarms, {"queue", "prod", "eu-west-1", {}, ""})};
}

/// What the medium size shows behind the summary and the divider.
std::string listOf(const Watching& state) {
    const std::string divider = "\nrectangle #24262B";
    const auto text = described(shown(state, medium));
    return text.substr(text.find(divider) + divider.size());
}

TEST(AlarmsWidgetView, ShowsTheSummaryOfEveryState) {
    const ScopedSurroundings scope{viewSurroundings()};
    struct State {
        std::int64_t firing{};
        bool stale{};
        std::string color{};
        std::string checkmark{};
    };
    for (const auto& [firing, stale, color, checkmark] :
         {State{0, false, "#E6E8EB", "#4CC790"}, State{0, true, "#7C838E", "#7C838E"},
          State{1, false, "#F2716B", ""}, State{12, false, "#F2716B", ""},
          State{12, true, "#7C838E", ""}, State{-1, false, "#E6E8EB", ""}}) {
        for (const int paused : {0, 1, 2}) {
            Watching state = watching(firing, stale, 1);
            state.paused = paused;
            std::string expected = "\n\"Alarms firing\" 11 medium #A4AAB4";
            if (firing == 0)
                expected += "\n<checkmark.circle.fill> 26 semibold " + checkmark + " accent";
            expected += "\n\"" + std::to_string(firing) + "\" 44 semibold " + color +
                        " rounded digits limit 1 accent";
            if (paused > 0)
                expected += R"(
<pause.circle.fill> 11 semibold #E5B25A
"Paused · sign in" 11 semibold #E5B25A limit 1)";
            expected += stale ? R"(
"Last updated" 11 regular #E5B25A limit 1
"5 min. ago" 11 regular #7C838E limit 1)"
                              : R"(
"1234 watched · 5 min. ago" 11 regular #7C838E limit 1)";
            EXPECT_EQ(described(shown(state, small)), expected);
            EXPECT_EQ(described(shown(state, medium)),
                      expected + "\nrectangle #24262B" + listOf(state));
        }
    }
}

TEST(AlarmsWidgetView, SaysInBothSizesWhyThereIsNothingToShow) {
    const ScopedSurroundings scope{viewSurroundings()};
    const std::vector<std::pair<Case, std::string>> cases{
        {AlarmsDisplay::Unavailable{}, "Open Tessary and turn on alarm notifications."},
        {AlarmsDisplay::NotWatching{}, "Alarm notifications are off in Tessary."},
        {watching(4, true, 3), ""}};
    for (const auto& [display, detail] : cases) {
        for (const auto family : {small, medium}) {
            const DisplayList open = shown(display, family);
            const DisplayList locked = shown(display, family, 2, true);
            EXPECT_EQ(described(locked), R"(
"Alarms firing" 11 medium #A4AAB4
<lock.fill> 20 medium #7C838E
"Hidden while locked" 15 semibold #E6E8EB
"Unlock your Mac to see it." 11 regular #7C838E limit 3)");
            for (const DisplayList& list : {open, locked}) {
                EXPECT_EQ(list.background, presentation::Palette::background);
                EXPECT_EQ(list.colorScheme, views::ColorScheme::dark);
                EXPECT_EQ(list.url, "tessary://alarms");
            }
            if (detail.empty()) continue;
            EXPECT_EQ(described(open), R"(
"Alarms firing" 11 medium #A4AAB4
<bell.slash> 22 medium #7C838E
"Not watching" 15 semibold #E6E8EB
")" + detail + "\" 11 regular #7C838E limit 3");
            EXPECT_EQ(open.elements[0].frame.origin, (views::Point{16, 16}));
            EXPECT_EQ(open.elements[2].frame.minY() - open.elements[1].frame.maxY(), 6);
            EXPECT_EQ(open.elements[3].frame.minY() - open.elements[2].frame.maxY(), 6);
            EXPECT_EQ(open.elements[3].frame.maxY(), 148);
        }
    }
}

TEST(AlarmsWidgetView, ListsThreeAlarmsAndCountsTheRestByFiring) {
    const ScopedSurroundings scope{viewSurroundings()};
    using Firing = std::vector<std::pair<std::int64_t, std::string>>;
    for (const bool stale : {false, true}) {
        const std::string name = stale ? "#A4AAB4" : "#E6E8EB";
        const std::string row = "\n\"queue\" 12 semibold " + name + " limit 1 middle" +
                                "\n\"prod · eu-west-1\" 11 regular #7C838E limit 1 middle";
        for (std::size_t alarms = 1; alarms <= 5; ++alarms) {
            std::string rows;
            for (std::size_t i = 0; i < alarms && i < 3; ++i) rows += row;
            for (const std::int64_t firing : {least, std::int64_t{0}, std::int64_t{3}})
                EXPECT_EQ(listOf(watching(firing, stale, alarms)), rows);
            for (const auto& [firing, more] :
                 Firing{{4, "1"}, {5, "2"}, {1003, "1000"}, {most, "9223372036854775804"}})
                EXPECT_EQ(listOf(watching(firing, stale, alarms)),
                          rows + "\n\"+" + more + " more\" 11 regular #7C838E");
        }
        for (const auto& [firing, text] : Firing{{0, "No watched alarms are in ALARM."},
                                                 {4, "4 firing"},
                                                 {-1, "-1 firing"},
                                                 {12345, "12345 firing"}}) {
            EXPECT_EQ(listOf(watching(firing, stale)), "\n\"" + text + "\" 12 regular #A4AAB4");
            const DisplayList list = shown(watching(firing, stale), medium);
            EXPECT_EQ(list.elements.back().frame.midY(), 82) << text;
        }
    }
}

TEST(AlarmsWidgetView, KeepsItsDistancesAtEveryScale) {
    const ScopedSurroundings scope{viewSurroundings()};
    for (const double scale : {1, 2, 3, 4}) {
        Watching state = watching(4, false, 3);
        state.paused = 1;
        const DisplayList list = shown(state, medium, scale);
        const auto frame = [&](std::size_t index) { return list.elements.at(index).frame; };
        const auto below = [&](std::size_t index) {
            return frame(index + 1).minY() - frame(index).maxY();
        };
        // 0 title, 1 count, 2 3 paused, 4 freshness, 5 divider, 6 to 11 rows, 12 "+1 more"
        EXPECT_EQ(frame(0).origin, (views::Point{16, 16}));
        EXPECT_EQ(frame(1).minX(), 16);
        EXPECT_NEAR(frame(1).midY(), (frame(0).maxY() + frame(2).minY()) / 2, 1 / scale);
        EXPECT_EQ(frame(3).minX() - frame(2).maxX(), 3);
        EXPECT_EQ(below(3), 2);
        EXPECT_EQ(frame(4).maxY(), 148);
        EXPECT_EQ(frame(5), (views::Rect{{16 + 118 + 14, 16}, {1, 132}}));
        for (std::size_t i = 6; i < 13; ++i) EXPECT_EQ(frame(i).minX(), 16 + 118 + 14 + 1 + 14);
        for (std::size_t i = 6; i < 12; ++i) EXPECT_EQ(below(i), i % 2 == 0 ? 1 : 7);

        const DisplayList quiet = shown(watching(0), small, scale);
        const views::Rect symbol = quiet.elements.at(1).frame;
        EXPECT_EQ(quiet.elements[2].frame.minX() - symbol.maxX(), 6);
        EXPECT_NEAR(quiet.elements[2].frame.midY(), symbol.midY(), 1 / scale);
    }
    // On a card too low for them the texts keep four points between them.
    const views::Surface low{{164, 60}, views::EdgeInsets::all(16), 22, 2};
    const DisplayList list = rendered(Summary{watching(4), {1731772840}}, low);
    for (const std::size_t i : {1U, 2U})
        EXPECT_EQ(list.elements.at(i).frame.minY() - list.elements[i - 1].frame.maxY(), 4);
}

void expectWithin(const DisplayList& list, std::size_t first, double left, double right) {
    for (std::size_t i = first; i < list.elements.size(); ++i) {
        const views::Rect& frame = list.elements[i].frame;
        EXPECT_TRUE(frame.minX() >= left && frame.maxX() <= right) << described(list);
        EXPECT_TRUE(frame.minY() >= 16 && frame.maxY() <= 148) << described(list);
    }
}

TEST(AlarmsWidgetView, ShrinksCountsToHalfTheirSizeInsideTheirColumn) {
    for (const auto& [locale, million] :
         std::vector<std::pair<std::string, std::string>>{{"en_US", "1,234,567"},
                                                          {"de_DE", "1.234.567"},
                                                          {"fr_FR", "1\u202F234\u202F567"},
                                                          {"ja_JP", "1,234,567"},
                                                          {"ar_EG", "١٬٢٣٤٬٥٦٧"}}) {
        const ScopedSurroundings scope{viewSurroundings(locale)};
        for (const auto count : std::vector<std::int64_t>{0, 1, 12, 1234, 1234567, most, least}) {
            for (const auto family : {small, medium}) {
                Watching state = watching(count, count % 2 == 0);
                state.watched = count;
                DisplayList list = shown(state, family);
                expectWithin(list, 0, 16, family == medium ? 328 : 148);
                const double room = family == medium ? 118 : 132;
                list.elements.resize(count == 0 ? 3 : 2);
                expectWithin(list, 0, 16, 16 + room);

                const views::TextElement text = textAt(list, list.elements.size() - 1);
                const bool huge = count == most || count == least;
                EXPECT_EQ(text.text == million, count == 1234567) << text.text;
                EXPECT_EQ(text.lines.size(), 1);
                EXPECT_EQ(text.lines[0] == text.text, !huge) << text.text;
                EXPECT_EQ(text.lines[0].ends_with("…"), huge) << text.text;
                EXPECT_GE(text.shrink, huge || count == 1234567 ? 0.5 : 0.9) << text.text;
                EXPECT_LE(text.shrink, huge ? 0.5 : count == 1234567 ? 0.9 : 1) << text.text;
                const bool shrunk = text.shrink < 1 && !huge;  // and no more than it must
                EXPECT_GE(list.elements.back().frame.size.width, shrunk ? room - 1 : 20);
            }
        }
    }
}

TEST(AlarmsWidgetView, ShortensNamesOfAnyLengthInTheirMiddle) {
    const ScopedSurroundings scope{viewSurroundings()};
    for (const std::string character : {"i", "W", "é", "漢", "ع", "e\u0301", "👩\u200D💻", " "}) {
        std::string name = "[";
        for (int length = 1; length <= 400; ++length) {
            name += character;
            if (length > 40 && length % 50 != 0) continue;
            Watching state = watching(9);
            state.alarms = {{name + "]", name + "]", "eu", {}, ""}};
            const DisplayList list = shown(state, medium);
            ASSERT_EQ(list.elements.size(), 7);
            expectWithin(list, 4, 163, 328);
            for (const std::size_t row : {4U, 5U}) {
                const views::TextElement text = textAt(list, row);
                const std::string line = text.lines.at(0);
                EXPECT_EQ(text.text, row == 4 ? name + "]" : name + "] · eu");
                EXPECT_NE(line == text.text, line.find("…") != line.npos) << line;
                EXPECT_TRUE(line.starts_with("[") && line.ends_with(row == 4 ? "]" : "eu")) << line;
                EXPECT_TRUE(text.lines.size() == 1 && text.shrink == 1) << line;
            }
        }
    }
}

}  // namespace
}  // namespace tessary::alarms
