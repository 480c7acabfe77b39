#include "presentation/relative.h"

#include <gtest/gtest.h>

#include "support/rendering.h"

namespace tessary::presentation {
namespace {

TEST(Relative, SaysJustNowBelowAMinuteAndTheLocalesPhraseFromThenOn) {
    const foundation::ScopedSurroundings scope{viewSurroundings()};
    for (const auto& [elapsed, phrase] :
         std::vector<std::pair<double, std::string>>{{0, "just now"},
                                                     {59.999, "just now"},
                                                     {-1, "just now"},
                                                     {-1e9, "just now"},
                                                     {-INFINITY, "just now"},
                                                     {std::nan(""), "just now"},
                                                     {60, "1 min. ago"},
                                                     {119.999, "1 min. ago"},
                                                     {300, "5 min. ago"},
                                                     {7200, "2 hr. ago"},
                                                     {3 * 86400, "3 days ago"},
                                                     {800 * 86400, "2 yr. ago"}})
        EXPECT_EQ(relative({1731772800}, {1731772800 + elapsed}), phrase) << elapsed;

    const foundation::ScopedSurroundings german{viewSurroundings("de_DE")};
    EXPECT_EQ(relative({0}, {59}) + ", " + relative({0}, {60}), "just now, vor 1 Min.");
}

}  // namespace
}  // namespace tessary::presentation
