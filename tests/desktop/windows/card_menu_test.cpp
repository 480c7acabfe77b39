#include "desktop/windows/card_menu.h"

#include <gtest/gtest.h>

#include "support/table.h"

namespace tessary::windows {
namespace {

using namespace places;

const std::vector<Monitor> desk{
    {MonitorName{"Dell Inc.", "U2720Q", "DP-1"}}, {MonitorName{"", "", "eDP-1"}}, {}};

// The monitor it is on, its size, what it shows; what is offered, and what each brings about.
TEST(CardMenu, OffersWhatIsOtherThanItIs) {
    for (const auto& row : table(R"(
        0 small pin    | Edit Widget…: edit; Medium: medium; Move to eDP-1: eDP-1 -0,20; Remove Widget: remove; ; Add Widget…: add; Quit: quit;
        1 medium alarms | Small: small; Move to U2720Q: DP-1 -0,20; Remove Widget: remove; ; Add Widget…: add; Quit: quit;
    )")) {
        std::string told;
        std::istringstream words{row[0]};
        std::size_t monitor{};
        std::string family, shown;
        words >> monitor >> family >> shown;
        const auto tell = [&](const char* what) { return [&told, what] { told += what; }; };
        Card::Events events{
            .moved = [&](const Place& to) { told += to.monitor->connector + " " + describe(to); },
            .familyChosen = [&](Family chosen) { told += nameOf(chosen); },
            .removeChosen = tell("remove"),
            .addChosen = tell("add"),
            .quitChosen = tell("quit"),
        };
        if (shown == "pin") events.editChosen = tell("edit");
        auto place = *parsePlace("-0,20");
        place.monitor = desk[monitor].name;
        for (const auto& [label, chosen] : cardMenu(events, *familyNamed(family), place, desk)) {
            told += (told.empty() ? "" : " ") + label + (chosen ? ": " : "");
            if (chosen) chosen();
            told += ";";
        }
        EXPECT_EQ(told, row[1]);
    }
}

}  // namespace
}  // namespace tessary::windows
