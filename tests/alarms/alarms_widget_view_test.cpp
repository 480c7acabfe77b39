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

TEST(AlarmsWidgetView, ShrinksCountsToHalfTheirSizeInsideTheirColumn) {
    for (const std::string locale : {"en_US", "de_DE", "fr_FR", "ja_JP", "ar_EG"}) {
        for (const auto count : std::vector<std::int64_t>{0, 1, 12, 1234, 1234567, most, least}) {
            for (const bool medium : {false, true}) {
                Watching state = watching(count, count % 2 == 0, 0);
                state.watched = count;
                views::DisplayList list =
                    hosted(entryView(state), medium, false, realType(), locale);
                expectWithin(list, 16, medium ? 328 : 148);
                const double room = medium ? 118 : 132;
                list.elements.resize(count == 0 ? 3 : 2);
                expectWithin(list, 16, 16 + room);

                const views::TextElement text = textAt(list, list.elements.size() - 1);
                const bool huge = count == most || count == least;
                EXPECT_EQ(text.text, (locale::UserLocale{locale}.integer(count)));
                expectShrunk(text, 0.5);
                EXPECT_EQ(text.lines[0] == text.text, !huge) << text.text;
                EXPECT_EQ(text.shrink < 0.9, huge || count == 1234567) << text.text;
                const bool shrunk = text.shrink < 1 && !huge;  // and no more than it must
                EXPECT_GE(list.elements.back().frame.size.width, shrunk ? room - 1 : 20);
            }
        }
    }
}

}  // namespace
}  // namespace tessary::alarms
