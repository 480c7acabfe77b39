#include "presentation/value_formatting.h"

#include <gtest/gtest.h>

#include "platform/system/surroundings.h"
#include "presentation/relative.h"
#include "support/golden.h"

namespace tessary::presentation {

using system::ScopedSurroundings;

TEST(ValueFormatting, ShortensNumbersAndWritesOnlySizesInTheUsersLocale) {
    expectTranscript("values.txt", [](const std::string& line) {
        const auto asked = words(line);
        const ScopedSurroundings fixed{{.locale = {asked.at(0), "UTC"}}};
        const double value = std::stod(asked.at(1));
        return formatValue(value, asked.size() > 2 ? std::optional{asked[2]} : std::nullopt);
    });
    EXPECT_EQ(formatValue(1, ""), "1 ");
    EXPECT_EQ(formatValue(-1.7e308, {}).size(), std::string{"-.0B"}.size() + 300);
}

TEST(Relative, SaysJustNowBelowAMinuteAndTheLocalesPhraseFromThenOn) {
    expectTranscript("ages.txt", [](const std::string& line) {
        const auto asked = words(line);
        const ScopedSurroundings fixed{{.locale = {asked.at(0), "UTC"}}};
        return relative({1731772800}, {1731772800 + std::stod(asked.at(1))});
    });
}

}  // namespace tessary::presentation
