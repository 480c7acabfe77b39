#include "presentation/pin_message.h"

#include <gtest/gtest.h>

#include "presentation/locked_placeholder.h"
#include "support/rendering.h"

namespace tessary::presentation {
namespace {

using views::View;

TEST(PinMessage, HasItsHeadingAtTheTopAndTheRestAtTheBottom) {
    const auto list = rendered(PinMessage{"CloudWatch alarm", "pin.slash", "Not pinned", "Open."});
    EXPECT_EQ(described(list), R"(
"CloudWatch alarm" 11 medium #A4AAB4
<pin.slash> 20 medium #7C838E
"Not pinned" 15 semibold #E6E8EB
"Open." 11 regular #7C838E limit 3)");

    EXPECT_EQ(list.elements.front().frame.minY(), 16);
    EXPECT_EQ(list.elements.back().frame.maxY(), 148);
    for (const views::Element& element : list.elements) EXPECT_EQ(element.frame.minX(), 16);
    for (const std::size_t i : {2U, 3U})
        EXPECT_EQ(list.elements[i].frame.minY() - list.elements[i - 1].frame.maxY(), 6);
}

TEST(PinMessage, GivesItsDetailTheLinesItNeedsUpToThree) {
    const std::string tooLong =
        "This alarm was removed in Tessary. Edit the widget to choose "
        "another, or open Tessary and pin the alarm again.";
    for (const auto& [detail, lines] : std::vector<std::pair<std::string, std::size_t>>{
             {"", 1}, {"One.", 1}, {"One.\nTwo.", 2}, {"1\n2\n3", 3}, {tooLong, 3}}) {
        for (double height = 40; height <= 240; height += 5) {  // it overflows a card too low
            const views::Surface card{{164, height}, views::EdgeInsets::all(16), 22, 2};
            const auto shown = textAt(rendered(PinMessage{"h", "lock.fill", "t", detail}, card), 3);
            ASSERT_EQ(shown.lines.size(), lines) << detail << " at " << height;
            EXPECT_EQ(shown.lines.back().ends_with("…"), detail == tooLong) << height;
        }
    }
}

TEST(LockedPlaceholder, HidesTheContentOnlyFromAPlaceholder) {
    const View content =
        VStack(views::Alignment::leading, 3, {views::Label("prod", "lock.fill"), views::Circle()});
    const View guarded = content.modifier(LockedPlaceholder{"CloudWatch metric"});
    for (const bool privacy : {false, true}) {
        const views::Environment open{.redaction = {false, privacy}};
        EXPECT_EQ(rendered(guarded, smallCard, open), rendered(content, smallCard, open));

        const auto hidden = rendered(guarded, smallCard, {.redaction = {true, privacy}});
        const PinMessage message{"CloudWatch metric", "lock.fill", "Hidden while locked",
                                 "Unlock your Mac to see it."};
        EXPECT_EQ(hidden.elements, rendered(message).elements);
        EXPECT_EQ(hidden.colorScheme, views::ColorScheme::dark);
    }
}

}  // namespace
}  // namespace tessary::presentation
