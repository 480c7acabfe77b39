#include "presentation/pin_problem.h"

#include <gtest/gtest.h>

#include "presentation/tight_label.h"
#include "support/rendering.h"

namespace tessary::presentation {
namespace {

using views::View;

TEST(PinProblem, NamesTheFirstThatHolds) {
    const foundation::ScopedSurroundings scope{viewSurroundings()};
    const std::string text = "\" 11 medium #E5B25A limit 1";
    const std::string error = "\n<exclamationmark.triangle.fill> 11 medium #E5B25A\n\"";
    for (const bool stale : {false, true}) {
        const auto shown = [&](const std::optional<std::string>& fault, bool authExpired) {
            return described(rendered(PinProblem{"prod", fault, authExpired, stale, {0}, {300}}));
        };
        EXPECT_EQ(shown({}, false), stale ? "\n\"Last updated 5 min. ago" + text : "");
        EXPECT_EQ(shown("", false), error + text);
        EXPECT_EQ(shown("Throttled", false), error + "Throttled" + text);
        for (const auto& fault : {std::optional<std::string>{}, {""}, {"Throttled"}})
            EXPECT_EQ(shown(fault, true),
                      "\n<person.crop.circle.badge.exclamationmark> 11 medium #E5B25A"
                      "\n\"Sign in to prod" +
                          text);
    }
}

TEST(PinProblem, TakesNoSpaceWhereThereIsNone) {
    const auto stack = [](std::vector<View> children) {
        return rendered(VStack(views::Alignment::leading, 6, std::move(children)));
    };
    const View text = views::Text("text");
    EXPECT_EQ(stack({text, PinProblem{}, text}), stack({text, text}));
    EXPECT_NE(stack({text, PinProblem{.error = ""}, text}), stack({text, text}));
}

TEST(PinProblem, KeepsToOneLine) {
    const auto list = rendered(PinProblem{.error = "An error occurred: rate exceeded\nTry again"});
    EXPECT_EQ(textAt(list, 1).lines.size(), 1);
    EXPECT_TRUE(textAt(list, 1).lines[0].starts_with("An error"));
    EXPECT_TRUE(textAt(list, 1).lines[0].ends_with("…"));
    EXPECT_GE(list.elements[0].frame.minX(), 16);
    EXPECT_LE(list.elements[1].frame.maxX(), 148);
}

TEST(TightLabel, KeepsItsGapAtEveryFontSize) {
    const View label = views::Label("m", "lock.fill").labelStyle(TightLabel{});
    for (double size = 5; size <= 40; size += 0.5) {
        const auto list = rendered(label.font(views::Font::system(size)));
        const views::Rect icon = list.elements.at(0).frame;
        EXPECT_EQ(list.elements.at(1).frame.minX() - icon.maxX(), 3) << size;
        EXPECT_EQ(list.elements.at(1).frame.midY(), icon.midY()) << size;
        EXPECT_EQ(textAt(list, 1).font, views::Font::system(size));
    }
}

}  // namespace
}  // namespace tessary::presentation
