#include "presentation/relative.h"

#include <gtest/gtest.h>
#include <limits>

#include "presentation/palette.h"
#include "support/rendering.h"

namespace tessary::presentation {
namespace {

TEST(Relative, SaysJustNowBelowAMinuteAndTheLocalesPhraseFromThenOn) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    constexpr double day = 86400;
    const std::vector<std::pair<double, std::string>> cases{
        {0, "just now"},         {30, "just now"},        {59.999, "just now"},
        {-1, "just now"},        {-1e9, "just now"},      {std::nan(""), "just now"},
        {-infinity, "just now"}, {60, "1 min. ago"},      {119.999, "1 min. ago"},
        {300, "5 min. ago"},     {7200, "2 hr. ago"},     {3 * day, "3 days ago"},
        {7 * day, "1 wk. ago"},  {800 * day, "2 yr. ago"}};
    for (const auto& [elapsed, phrase] : cases) {
        const foundation::ScopedSurroundings scope{viewSurroundings()};
        EXPECT_EQ(relative({1731772800}, {1731772800 + elapsed}), phrase) << elapsed;
    }
    const foundation::ScopedSurroundings german{viewSurroundings("de_DE")};
    EXPECT_EQ(relative({0}, {59}), "just now");
    EXPECT_EQ(relative({0}, {60}), "vor 1 Min.");
}

TEST(Palette, IsOpaqueAndDark) {
    std::string hexes;
    for (const Color& color :
         {Palette::background, Palette::primary, Palette::secondary, Palette::tertiary,
          Palette::danger, Palette::success, Palette::warning, Palette::divider, Palette::accent}) {
        hexes += color.hex() + ' ';
        EXPECT_EQ(color.opacity, 1);
    }
    EXPECT_EQ(hexes, "#141518 #E6E8EB #A4AAB4 #7C838E #F2716B #4CC790 #E5B25A #24262B #7FB0FF ");
    EXPECT_EQ(Palette::danger.red, 242 / 255.0);
}

}  // namespace
}  // namespace tessary::presentation
