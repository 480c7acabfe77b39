#include <cmath>
#include <gtest/gtest.h>

#include "platform/foundation/fixtures.h"
#include "platform/foundation/user_locale.h"

namespace tessary::foundation {

TEST(ByteCount, IsWrittenAsTheLocaleDoes) {
    const std::string rows[][6] = {
        {"en_US", "Zero KB", "1 byte", "-2 KB", "1.5 MB", "-9.22 EB"},
        {"en_GB", "Zero KB", "1 byte", "-2 KB", "1.5 MB", "-9.22 EB"},
        {"de_DE", "0 kB", "1\u00A0Byte", "-2 kB", "1,5 MB", "-9,22 EB"},
        {"fr_FR", "0\u202Fko", "1\u00A0octet", "-2\u202Fko", "1,5\u202FMo", "-9,22\u202FEo"},
        {"ja_JP", "0 KB", "1 バイト", "-2 KB", "1.5 MB", "-9.22 EB"},
        {"ru_RU", "0 кБ", "1 байт", "-2 кБ", "1,5 МБ", "-9,22 ЭБ"},
        {"ar_EG", "٠ كيلوبايت", "١ بايت", "\u061C-٢ كيلوبايت", "١٫٥ م.ب", "\u061C-٩٫٢٢ إ.بايت"}};
    for (const auto& [identifier, zero, one, kilo, mega, exa] : rows) {
        const UserLocale locale{identifier};
        EXPECT_EQ(locale.byteCount(0), zero);
        EXPECT_EQ(locale.byteCount(1), one);
        EXPECT_EQ(locale.byteCount(-1999), kilo);
        EXPECT_EQ(locale.byteCount(1'500'000), mega);
        EXPECT_EQ(locale.byteCount(INT64_MIN), exa);
    }
}

TEST(ByteCount, TakesTheUnitThatItRoundsTo) {
    for (const auto& [bytes, expected] : pairs(R"(-1=-1byte 2=2bytes -2=-2bytes 999=999bytes
        1000=1KB 1500=2KB 2500=2KB 2501=3KB 999499=999KB 999500=1MB -1950000=-2MB
        999949999=999.9MB 999950000=1GB 1205000000=1.2GB 1215000000=1.22GB 999994999999=999.99GB
        999995000000=1TB 999994999999999=999.99TB 999995000000000=1PB
        999994999999999999=999.99PB -999995000000000000=-1EB 9214999999999999999=9.21EB
        9223372036854775807=9.22EB)")) {
        auto text = UserLocale{}.byteCount(std::stoll(bytes));
        std::erase(text, ' ');
        EXPECT_EQ(text, expected) << bytes;
    }
}

// Reads the text and counts in whole bytes, around every place where a unit rounds.
TEST(ByteCount, IsTheNearestThatItsUnitWrites) {
    const UserLocale us;
    for (std::int64_t digit = 1000; digit <= 10'000'000'000'000'000; digit *= 10) {
        for (const std::int64_t digits : {1, 9, 10, 25, 99, 100, 113, 499, 500, 734, 901}) {
            for (const std::int64_t off :
                 {-digit / 2 - 1, -digit / 2, 1 - digit / 2, -1L, 0L, 1L}) {
                const auto bytes = digits * digit + off;
                const auto text = us.byteCount(bytes);
                EXPECT_EQ(us.byteCount(-bytes), "-" + text);
                if (bytes < 1000) continue;
                const auto unit = std::string{"KMGTPE"}.find(text[text.find(' ') + 1]);
                const auto step =
                    std::llround(std::pow(1000, unit + 1) / std::pow(10, std::min(unit, 2UL)));
                const auto steps =
                    std::llround(std::stod(text) * std::pow(10, std::min(unit, 2UL)));
                const auto error = 2 * std::abs(steps * step - bytes);
                EXPECT_EQ(text.find("0 ", text.find('.')), text.npos) << text;
                EXPECT_LT(std::stod(text), 1000) << bytes;
                EXPECT_TRUE(error < step || (error == step && steps % 2 == 0)) << bytes << text;
            }
        }
    }
}

}  // namespace tessary::foundation
