#include "presentation/pin_message.h"

#include <gtest/gtest.h>

#include "presentation/locked_placeholder.h"
#include "support/rendering.h"

namespace tessary::presentation {
namespace {

using views::DisplayList;
using views::View;

const std::string longDetail =
    "This alarm was removed in Tessary. Edit the widget to choose "
    "another, or open Tessary and pin the alarm again.";

TEST(PinMessage, HasItsHeadingAtTheTopAndTheRestAtTheBottom) {
    const DisplayList list =
        rendered(PinMessage{"CloudWatch alarm", "pin.slash", "Not pinned", "Open an alarm."});
    EXPECT_EQ(described(list), R"(
"CloudWatch alarm" 11 medium #A4AAB4
<pin.slash> 20 medium #7C838E
"Not pinned" 15 semibold #E6E8EB
"Open an alarm." 11 regular #7C838E limit 3)");

    EXPECT_EQ(list.elements.front().frame.minY(), 16);
    EXPECT_EQ(list.elements.back().frame.maxY(), 148);
    for (const views::Element& element : list.elements) EXPECT_EQ(element.frame.minX(), 16);
    for (std::size_t i = 2; i < list.elements.size(); ++i)
        EXPECT_EQ(list.elements[i].frame.minY() - list.elements[i - 1].frame.maxY(), 6) << i;
}

TEST(PinMessage, GivesItsDetailTheLinesItNeedsUpToThree) {
    for (const auto& [detail, lines] : std::vector<std::pair<std::string, std::size_t>>{
             {"", 1}, {"One.", 1}, {"One.\nTwo.", 2}, {"1\n2\n3", 3}, {longDetail, 3}}) {
        // On a card too low for it, too: it overflows instead of losing lines.
        for (double height = 40; height <= 240; height += 5) {
            views::Surface card = smallCard;
            card.size.height = height;
            const auto shown = textAt(rendered(PinMessage{"h", "lock.fill", "t", detail}, card), 3);
            ASSERT_EQ(shown.lines.size(), lines) << detail << " at " << height;
            EXPECT_EQ(shown.lines.back().ends_with("…"), detail == longDetail) << height;
        }
    }
}

/// Content that would show whether anything about it was changed.
struct Probe {
    View body() const {
        return VStack(views::Alignment::leading, 3,
                      {views::Label("prod", "lock.fill"), views::Circle()});
    }
};

TEST(LockedPlaceholder, HidesTheContentOnlyFromAPlaceholder) {
    const View guarded = View{Probe{}}.modifier(LockedPlaceholder{"CloudWatch metric"});
    for (const bool privacy : {false, true}) {
        views::Environment environment;
        environment.redaction.privacy = privacy;
        EXPECT_EQ(rendered(guarded, smallCard, environment),
                  rendered(Probe{}, smallCard, environment));

        environment.redaction.placeholder = true;
        const DisplayList hidden = rendered(guarded, smallCard, environment);
        EXPECT_EQ(hidden.elements,
                  rendered(PinMessage{"CloudWatch metric", "lock.fill", "Hidden while locked",
                                      "Unlock your Mac to see it."})
                      .elements);
        EXPECT_EQ(hidden.colorScheme, views::ColorScheme::dark);
    }
}

}  // namespace
}  // namespace tessary::presentation
