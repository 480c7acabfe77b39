#include "presentation/pin_problem.h"

#include <gtest/gtest.h>

#include "presentation/tight_label.h"
#include "support/rendering.h"

namespace tessary::presentation {
namespace {

using views::View;

constexpr const char* signIn = R"(
<person.crop.circle.badge.exclamationmark> 11 medium #E5B25A
"Sign in to prod" 11 medium #E5B25A limit 1)";
constexpr const char* throttled = R"(
<exclamationmark.triangle.fill> 11 medium #E5B25A
"Throttled" 11 medium #E5B25A limit 1)";
constexpr const char* emptyError = R"(
<exclamationmark.triangle.fill> 11 medium #E5B25A
"" 11 medium #E5B25A limit 1)";
constexpr const char* old = R"(
"Last updated 5 min. ago" 11 medium #E5B25A limit 1)";

TEST(PinProblem, NamesTheFirstThatHolds) {
    const foundation::ScopedSurroundings scope{viewSurroundings()};
    struct Case {
        std::optional<std::string> error{};
        bool authExpired{};
        bool stale{};
        const char* shown{};
    };
    for (const auto& [error, authExpired, stale, shown] :
         {Case{{}, false, false, ""}, Case{{}, false, true, old},
          Case{"", false, false, emptyError}, Case{"", false, true, emptyError},
          Case{"Throttled", false, false, throttled}, Case{"Throttled", false, true, throttled},
          Case{{}, true, false, signIn}, Case{"", true, false, signIn},
          Case{"Throttled", true, true, signIn}}) {
        const PinProblem problem{"prod", error, authExpired, stale, {1000}, {1300}};
        EXPECT_EQ(described(rendered(problem)), shown);
    }
}

TEST(PinProblem, TakesNoSpaceWhereThereIsNone) {
    const auto stack = [](std::vector<View> children) {
        return rendered(VStack(views::Alignment::leading, 6, std::move(children)));
    };
    const View above = views::Text("above");
    const View below = views::Text("below");
    EXPECT_EQ(stack({above, PinProblem{}, below}), stack({above, below}));
    EXPECT_NE(stack({above, PinProblem{.error = ""}, below}), stack({above, below}));
}

TEST(PinProblem, KeepsToOneLine) {
    const std::string error = "An error occurred (Throttling): Rate exceeded\nTry again";
    const auto list = rendered(PinProblem{.profile = "p", .error = error});
    EXPECT_EQ(textAt(list, 1).text, error);
    EXPECT_EQ(textAt(list, 1).lines.size(), 1);
    EXPECT_TRUE(textAt(list, 1).lines[0].starts_with("An error"));
    EXPECT_TRUE(textAt(list, 1).lines[0].ends_with("…"));
    EXPECT_LE(list.elements[1].frame.maxX(), 148);
    EXPECT_GE(list.elements[0].frame.minX(), 16);
}

TEST(TightLabel, KeepsItsGapAtEveryFontSize) {
    for (double size = 5; size <= 40; size += 0.5) {
        const View label = views::Label("m", "lock.fill").labelStyle(TightLabel{});
        const auto list = rendered(label.font(views::Font::system(size)), mediumCard);
        const views::Rect& icon = list.elements[0].frame;
        const views::Rect& title = list.elements[1].frame;
        EXPECT_EQ(title.minX() - icon.maxX(), 3) << size;
        EXPECT_EQ(title.midY(), icon.midY()) << size;
        EXPECT_EQ(std::get<views::SymbolElement>(list.elements[0].content).font.size, size);
    }
}

}  // namespace
}  // namespace tessary::presentation
