#include "presentation/value_formatting.h"

#include <gtest/gtest.h>

#include "presentation/relative.h"
#include "support/golden.h"

namespace tessary::presentation {

TEST(ValueFormatting, ShortensNumbersAndWritesOnlySizesInTheUsersLocale) {
    expectTranscript("values.txt", [](const std::string& line) {
        const auto asked = words(line);
        const auto unit = asked.size() > 2 ? std::optional{asked[2]} : std::nullopt;
        return formatValue(std::stod(asked.at(1)), unit, {asked.at(0)});
    });
    EXPECT_EQ(formatValue(1, "", {}), "1 ");
    EXPECT_EQ(formatValue(-1.7e308, {}, {}).size(), std::string{"-.0B"}.size() + 300);
}

TEST(Relative, SaysJustNowBelowAMinuteAndTheLocalesPhraseFromThenOn) {
    expectTranscript("ages.txt", [](const std::string& line) {
        const auto asked = words(line);
        return relative({1731772800}, {1731772800 + std::stod(asked.at(1))}, {asked.at(0)});
    });
}

}  // namespace tessary::presentation
