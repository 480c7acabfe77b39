#include "alarms/alarms_widget_view.h"

#include <gtest/gtest.h>
#include <limits>

#include "presentation/palette.h"
#include "support/rendering.h"

namespace tessary::alarms {
namespace {

using foundation::ScopedSurroundings;
using views::DisplayList;
using views::Element;
using views::Rect;
using views::WidgetFamily;
using Case = AlarmsDisplay::Case;
using Watching = AlarmsDisplay::Watching;

constexpr Date now{1731772840};
constexpr auto most = std::numeric_limits<std::int64_t>::max();
constexpr auto least = std::numeric_limits<std::int64_t>::min();

DisplayList shown(const Case& display, WidgetFamily family, double scale = 2, bool locked = false) {
    const bool medium = family == WidgetFamily::systemMedium;
    views::Surface card = medium ? mediumCard : smallCard;
    card.scale = scale;
    views::Environment environment;
    environment.widgetFamily = family;
    environment.redaction.placeholder = locked;
    return rendered(AlarmsWidgetEntryView{{now, display}}, card, environment);
}
DisplayList small(const Case& display) { return shown(display, WidgetFamily::systemSmall); }
DisplayList medium(const Case& display) { return shown(display, WidgetFamily::systemMedium); }

Watching watching(std::int64_t firing, bool stale = false, std::size_t alarms = 0) {
    return {.firing = firing,
            .watched = 1234,
            .updated = now - 300,
            .stale = stale,
            .alarms = std::vector<Alarm>(alarms, {"queue", "prod", "eu-west-1", {}, ""})};
}

/// What the medium size shows behind the summary and the divider.
std::string listOf(const Watching& state) {
    const auto text = described(medium(state));
    const std::string divider = "\nrectangle #24262B";
    return text.substr(text.find(divider) + divider.size());
}

TEST(AlarmsWidgetView, ShowsTheSummaryOfEveryState) {
    const ScopedSurroundings scope{viewSurroundings()};
    Watching freshPaused = watching(12);
    Watching stalePaused = watching(12, true);
    freshPaused.paused = stalePaused.paused = 2;
    const std::string title = "\n\"Alarms firing\" 11 medium #A4AAB4";
    const std::string fresh = "\n\"1234 watched · 5 min. ago\" 11 regular #7C838E limit 1";
    const std::string stale = R"(
"Last updated" 11 regular #E5B25A limit 1
"5 min. ago" 11 regular #7C838E limit 1)";
    const std::string paused = R"(
<pause.circle.fill> 11 semibold #E5B25A
"Paused · sign in" 11 semibold #E5B25A limit 1)";
    const std::vector<std::pair<Watching, std::string>> cases{
        {watching(0), R"(
<checkmark.circle.fill> 26 semibold #4CC790 accent
"0" 44 semibold #E6E8EB rounded digits limit 1 accent)" +
                          fresh},
        {watching(0, true), R"(
<checkmark.circle.fill> 26 semibold #7C838E accent
"0" 44 semibold #7C838E rounded digits limit 1 accent)" +
                                stale},
        {watching(1), "\n\"1\" 44 semibold #F2716B rounded digits limit 1 accent" + fresh},
        {watching(-1), "\n\"-1\" 44 semibold #E6E8EB rounded digits limit 1 accent" + fresh},
        {watching(12, true), "\n\"12\" 44 semibold #7C838E rounded digits limit 1 accent" + stale},
        {freshPaused,
         "\n\"12\" 44 semibold #F2716B rounded digits limit 1 accent" + paused + fresh},
        {stalePaused,
         "\n\"12\" 44 semibold #7C838E rounded digits limit 1 accent" + paused + stale}};
    for (const auto& [state, summary] : cases) {
        EXPECT_EQ(described(small(state)), title + summary);
        EXPECT_TRUE(described(medium(state)).starts_with(title + summary + "\nrectangle #24262B"));
    }
}

TEST(AlarmsWidgetView, SaysInBothSizesThatNothingIsWatched) {
    const ScopedSurroundings scope{viewSurroundings()};
    for (const auto& [display, detail] : std::vector<std::pair<Case, std::string>>{
             {AlarmsDisplay::Unavailable{}, "Open Tessary and turn on alarm notifications."},
             {AlarmsDisplay::NotWatching{}, "Alarm notifications are off in Tessary."}}) {
        for (const DisplayList& list : {small(display), medium(display)}) {
            EXPECT_EQ(described(list), R"(
"Alarms firing" 11 medium #A4AAB4
<bell.slash> 22 medium #7C838E
"Not watching" 15 semibold #E6E8EB
")" + detail + "\" 11 regular #7C838E limit 3");
            EXPECT_EQ(list.elements[0].frame.minY(), 16);
            EXPECT_EQ(list.elements[3].frame.maxY(), 148);
            for (std::size_t i = 2; i < 4; ++i)
                EXPECT_EQ(list.elements[i].frame.minY() - list.elements[i - 1].frame.maxY(), 6);
        }
    }
}

TEST(AlarmsWidgetView, IsDarkOpensTheAlarmsAndHidesWhileLocked) {
    const ScopedSurroundings scope{viewSurroundings()};
    for (const Case& display :
         {Case{watching(0)}, Case{watching(4, true, 3)}, Case{AlarmsDisplay::Unavailable{}}}) {
        for (const auto family : {WidgetFamily::systemSmall, WidgetFamily::systemMedium}) {
            for (const bool locked : {false, true}) {
                const DisplayList list = shown(display, family, 2, locked);
                EXPECT_EQ(list.background, presentation::Palette::background);
                EXPECT_EQ(list.colorScheme, views::ColorScheme::dark);
                EXPECT_EQ(list.url, "tessary://alarms");
                if (!locked) continue;
                EXPECT_EQ(described(list), R"(
"Alarms firing" 11 medium #A4AAB4
<lock.fill> 20 medium #7C838E
"Hidden while locked" 15 semibold #E6E8EB
"Unlock your Mac to see it." 11 regular #7C838E limit 3)");
            }
        }
    }
}

TEST(AlarmsWidgetView, ListsThreeAlarmsAndCountsTheRestByFiring) {
    const ScopedSurroundings scope{viewSurroundings()};
    const std::string line = R"("prod · eu-west-1" 11 regular #7C838E limit 1 middle)";
    for (const bool stale : {false, true}) {
        const std::string row = "\n\"queue\" 12 semibold " +
                                std::string{stale ? "#A4AAB4" : "#E6E8EB"} + " limit 1 middle\n" +
                                line;
        for (std::size_t alarms = 1; alarms <= 5; ++alarms) {
            for (const auto& [firing, more] : std::vector<std::pair<std::int64_t, std::string>>{
                     {least, ""},
                     {0, ""},
                     {3, ""},
                     {4, "+1 more"},
                     {5, "+2 more"},
                     {1003, "+1000 more"},
                     {most, "+9223372036854775804 more"}}) {
                std::string expected = row;
                for (std::size_t i = 1; i < alarms && i < 3; ++i) expected += row;
                if (!more.empty()) expected += "\n\"" + more + "\" 11 regular #7C838E";
                EXPECT_EQ(listOf(watching(firing, stale, alarms)), expected);
            }
        }
        for (const auto& [firing, text] : std::vector<std::pair<std::int64_t, std::string>>{
                 {0, "No watched alarms are in ALARM."},
                 {4, "4 firing"},
                 {-1, "-1 firing"},
                 {12345, "12345 firing"}}) {
            EXPECT_EQ(listOf(watching(firing, stale)), "\n\"" + text + "\" 12 regular #A4AAB4");
            EXPECT_EQ(medium(watching(firing, stale)).elements.back().frame.midY(), 82) << text;
        }
    }
}

/// The distances that the views ask for, measured from frames.
TEST(AlarmsWidgetView, KeepsItsDistancesAtEveryScale) {
    const ScopedSurroundings scope{viewSurroundings()};
    for (const double scale : {1, 2, 3, 4}) {
        Watching state = watching(4, false, 3);
        state.paused = 1;
        const DisplayList list = shown(state, WidgetFamily::systemMedium, scale);
        const auto frame = [&](std::size_t index) { return list.elements.at(index).frame; };
        const auto below = [&](std::size_t index) {
            return frame(index + 1).minY() - frame(index).maxY();
        };
        // 0 title, 1 count, 2 3 paused, 4 freshness, 5 divider, 6 to 11 rows, 12 "+1 more"
        EXPECT_EQ(frame(0).origin, (views::Point{16, 16}));
        EXPECT_EQ(frame(1).minX(), 16);
        EXPECT_EQ(frame(3).minX() - frame(2).maxX(), 3);
        EXPECT_EQ(below(3), 2);
        EXPECT_EQ(frame(4).maxY(), 148);
        EXPECT_EQ(frame(5), (Rect{{16 + 118 + 14, 16}, {1, 132}}));
        for (std::size_t i = 6; i < 13; ++i) EXPECT_EQ(frame(i).minX(), 16 + 118 + 14 + 1 + 14);
        for (const std::size_t name : {6U, 8U, 10U}) {
            EXPECT_EQ(below(name), 1);
            EXPECT_EQ(below(name + 1), 7);
        }
        const double middle = (frame(0).maxY() + frame(2).minY()) / 2;
        EXPECT_NEAR(frame(1).midY(), middle, 1 / scale) << "equal space above and below";

        const DisplayList quiet = shown(watching(0), WidgetFamily::systemSmall, scale);
        const Rect& symbol = quiet.elements[1].frame;
        EXPECT_EQ(quiet.elements[2].frame.minX() - symbol.maxX(), 6);
        EXPECT_NEAR(quiet.elements[2].frame.midY(), symbol.midY(), 1 / scale);
    }
}

void expectWithin(const DisplayList& list, std::size_t first, std::size_t last, double left,
                  double right) {
    for (std::size_t i = first; i < last; ++i) {
        const Rect& frame = list.elements[i].frame;
        EXPECT_GE(frame.minX(), left) << described(list);
        EXPECT_LE(frame.maxX(), right) << described(list);
        EXPECT_GE(frame.minY(), 16) << described(list);
        EXPECT_LE(frame.maxY(), 148) << described(list);
    }
}

TEST(AlarmsWidgetView, ShrinksCountsToHalfTheirSizeInsideTheirColumn) {
    const std::vector<std::pair<std::string, std::string>> locales{{"en_US", "1,234,567"},
                                                                   {"de_DE", "1.234.567"},
                                                                   {"fr_FR", "1\u202F234\u202F567"},
                                                                   {"ja_JP", "1,234,567"},
                                                                   {"ar_EG", "١٬٢٣٤٬٥٦٧"}};
    for (const auto& [locale, million] : locales) {
        const ScopedSurroundings scope{viewSurroundings(locale)};
        for (const std::int64_t count : {std::int64_t{0}, std::int64_t{1}, std::int64_t{12},
                                         std::int64_t{1234}, std::int64_t{1234567}, most, least}) {
            for (Watching state : {watching(count), watching(count, true)}) {
                state.watched = count;
                state.paused = 1;
                const DisplayList narrow = small(state);
                expectWithin(narrow, 0, narrow.elements.size(), 16, 148);
                const DisplayList wide = medium(state);
                expectWithin(wide, 0, narrow.elements.size(), 16, 16 + 118);
                for (const DisplayList* list : {&narrow, &wide}) {
                    const std::size_t at = count == 0 ? 2 : 1;
                    const views::TextElement text = textAt(*list, at);
                    EXPECT_EQ(text.text == million, count == 1234567) << text.text;
                    const bool huge = count == most || count == least;
                    EXPECT_EQ(text.lines.size(), 1);
                    EXPECT_EQ(text.lines[0] == text.text, !huge) << text.text;
                    EXPECT_EQ(text.lines[0].ends_with("…"), huge) << text.text;
                    EXPECT_GE(text.shrink, count <= 1234 && !huge ? 0.9 : 0.5) << text.text;
                    EXPECT_LE(text.shrink, count < 1234567 && !huge ? 1 : 0.9) << text.text;
                    const bool shrunk = text.shrink < 1 && !huge;  // and no more than it must
                    const double room = list == &wide ? 118 : 132;
                    EXPECT_GE(list->elements[at].frame.size.width, shrunk ? room - 1 : 20);
                }
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
            const DisplayList list = medium(state);
            const std::size_t divider = 3;
            ASSERT_EQ(list.elements.size(), divider + 4);
            expectWithin(list, divider + 1, list.elements.size(), 163, 328);
            for (const std::size_t row : {1U, 2U}) {
                const views::TextElement text = textAt(list, divider + row);
                const std::string line = text.lines.at(0);
                EXPECT_EQ(text.lines.size(), 1);
                EXPECT_EQ(text.text, row == 1 ? name + "]" : name + "] · eu");
                EXPECT_NE(line == text.text, line.find("…") != std::string::npos) << line;
                EXPECT_TRUE(line.starts_with("[")) << line;
                EXPECT_TRUE(line.ends_with(row == 1 ? "]" : "eu")) << line;
                EXPECT_EQ(text.shrink, 1);
            }
        }
    }
}

}  // namespace
}  // namespace tessary::alarms
