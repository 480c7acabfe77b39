// The pieces around a pin; how they look is stored with the widgets that show them.
#include "presentation/message.h"

#include <gtest/gtest.h>

#include "presentation/locked_placeholder.h"
#include "presentation/pin_problem.h"
#include "support/rendering.h"

namespace tessary::presentation {
namespace {

using views::View;

TEST(Message, GivesItsDetailTheLinesItNeedsUpToThree) {
    const std::string tooLong =
        "This alarm was removed in Tessary. Edit the widget to choose "
        "another, or open Tessary and pin the alarm again.";
    for (const auto& [detail, lines] : std::vector<std::pair<std::string, std::size_t>>{
             {"", 1}, {"One.\nTwo.", 2}, {"1\n2\n3", 3}, {tooLong, 3}}) {
        for (double height = 40; height <= 240; height += 5) {  // it overflows a card too low
            const views::Surface card{{164, height}, views::EdgeInsets::all(16), 22, 2};
            const auto shown = textAt(rendered(Message{"h", "lock.fill", "t", detail}, card), 3);
            ASSERT_EQ(shown.lines.size(), lines) << detail << " at " << height;
            EXPECT_EQ(shown.lines.back().ends_with("…"), detail == tooLong) << height;
        }
    }
}

TEST(LockedPlaceholder, HidesTheContentOnlyFromAPlaceholder) {
    const View content = views::Label("prod", "lock.fill");
    const View guarded = content.modifier(LockedPlaceholder{"CloudWatch metric"});
    for (const bool privacy : {false, true}) {
        const views::Environment open{.redaction = {false, privacy}};
        EXPECT_EQ(rendered(guarded, smallCard, open), rendered(content, smallCard, open));
        const views::Environment locked{.redaction = {true, privacy}};
        EXPECT_EQ(textAt(rendered(guarded, smallCard, locked), 2).text, "Hidden while locked");
    }
}

TEST(PinProblem, NeverCutsHowOldTheDataIs) {
    for (const std::string locale :
         {"en_US", "de_DE", "fr_FR", "es_ES", "nl_NL", "sv_SE", "ru_RU", "ja_JP", "ar_EG", "fa_IR"})
        for (double age = 600; age < 4e9; age *= 1.07)
            for (const double width : {128, 132}) {
                const View problem = PinProblem{.updated = shownAt - age};
                const auto shown = textAt(rendered(problem.frame(views::FixedFrame{.width = width}),
                                                   smallCard, {.locale = {locale}, .now = shownAt}),
                                          0);
                EXPECT_FALSE(shown.lines[0].ends_with("…")) << locale << shown.lines[0];
                EXPECT_TRUE(locale != "en_US" || shown.lines[0] == shown.text) << shown.lines[0];
            }
}

}  // namespace
}  // namespace tessary::presentation
