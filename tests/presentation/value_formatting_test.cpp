#include "presentation/value_formatting.h"

#include <cmath>
#include <gtest/gtest.h>
#include <map>

#include "platform/foundation/fixtures.h"
#include "platform/foundation/surroundings.h"

namespace tessary::presentation {

using foundation::pairs, foundation::ScopedSurroundings, foundation::UserLocale;

TEST(ValueFormatting, ShortensNumbers) {
    for (const auto& [value, text] : pairs(R"(0=0 -0=-0 5=5 5.5=5.5 0.5=0.50 0.125=0.12 -0.004=-0.00
        0.999=1.00 1.04=1.0 42.25=42.2 42.35=42.4 99.96=100.0 150.7=151 100.5=100 1234.5=1234
        9999=9999 9999.99=10000 10000=10.0K 12345=12.3K -12345=-12.3K 12250=12.2K 999999=1000.0K
        1e6=1.0M 999999999=1000.0M 1e9=1.0B 2.5e9=2.5B -1e15=-1000000.0B nan=nan -nan=nan inf=infB
        -inf=-infB)"))
        EXPECT_EQ(formatValue(std::stod(value), {}), text);
    EXPECT_EQ(formatValue(-1.7e308, {}).size(), std::string{"-.0B"}.size() + 300);
}

TEST(ValueFormatting, WritesOnlySizesInTheUsersLocale) {
    const std::string rows[][4] = {{"en_US", "1.5 MB", "2 KB/s", "Zero KB"},
                                   {"de_DE", "1,5 MB", "2 kB/s", "0 kB"},
                                   {"fr_FR", "1,5\u202FMo", "2\u202Fko/s", "0\u202Fko"},
                                   {"ja_JP", "1.5 MB", "2 KB/s", "0 KB"},
                                   {"ar_EG", "١٫٥ م.ب", "٢ كيلوبايت/s", "٠ كيلوبايت"}};
    for (const auto& [identifier, megabytes, rate, zero] : rows) {
        const ScopedSurroundings fixed{{.locale = UserLocale{identifier}}};
        EXPECT_EQ(formatValue(1.5, "Megabytes"), megabytes);
        EXPECT_EQ(formatValue(2048, "Bytes/Second"), rate);
        EXPECT_EQ(formatValue(-0.9999, "Bytes"), zero);
        EXPECT_EQ(formatValue(42.3, "Percent"), "42.3%");
    }
}

TEST(ValueFormatting, WritesSizesBeyond64BitsAsNumbers) {
    for (const auto& [value, text] :
         pairs("0x1p63=9223372036.9B -0x1.0000000000001p63=-9223372036.9B "
               "inf=infB -inf=-infB nan=nan"))
        for (const std::string unit : {"Bytes", "Gigabytes", "Bytes/Second"})
            EXPECT_EQ(formatValue(std::stod(value), unit), text + " " + unit);
    EXPECT_EQ(formatValue(-0x1p63, "Bytes"), "-9.22 EB");
    EXPECT_EQ(formatValue(0x1.fffffffffffffp62, "Bytes/Second"), "9.22 EB/s");
}

/// The text must be a number half a step from the value at most, shortened as far as its size asks.
static void expectNearest(double value, const std::string& text) {
    const std::map<std::string, double> scales{{"", 1}, {"K", 1e3}, {"M", 1e6}, {"B", 1e9}};
    std::size_t end = 0;
    const auto shown = std::stold(text, &end);
    const auto scale = scales.at(text.substr(end));
    const auto decimals = end - 1 - std::min(text.find('.'), end - 1);
    EXPECT_LE(std::abs(shown * scale - value), scale / std::pow(10, decimals) / 2 * (1 + 1e-9))
        << text;
    EXPECT_EQ(scale, value >= 1e9 ? 1e9 : value >= 1e6 ? 1e6 : value >= 1e4 ? 1e3 : 1) << text;
    const bool isWhole = value >= 100 || std::trunc(value) == value;
    EXPECT_EQ(decimals, value >= 1e4 ? 1U : isWhole ? 0U : value >= 1 ? 1U : 2U) << text;
}

TEST(ValueFormatting, HoldsItsRulesForEveryUnitAndMagnitude) {
    const std::map<std::string, std::string> suffixes{{"None", ""},
                                                      {"Count", ""},
                                                      {"Percent", "%"},
                                                      {"Seconds", " s"},
                                                      {"Milliseconds", " ms"},
                                                      {"Microseconds", " \u00B5s"},
                                                      {"Count/Second", "/s"},
                                                      {"Terabytes", " Terabytes"},
                                                      {"percent", " percent"},
                                                      {"Kilobytes/Second", " Kilobytes/Second"},
                                                      {"", " "}};
    const std::map<std::string, double> sizes{{"Bytes", 1},
                                              {"Kilobytes", 1e3},
                                              {"Megabytes", 1e6},
                                              {"Gigabytes", 1e9},
                                              {"Bytes/Second", 1}};
    for (double magnitude = 1e-9; magnitude < 1e16; magnitude *= 10) {
        for (const double digits :
             {1.0, -1.005, 1.25, -2.5, 4.9999, -7.35, 9.9949, -9.995, 9.99999}) {
            const double value = digits * magnitude;
            const auto number = formatValue(value, {});
            expectNearest(std::abs(value), number.substr(value < 0));
            EXPECT_EQ(formatValue(-value, {}), value < 0 ? number.substr(1) : "-" + number);
            for (const auto& [unit, suffix] : suffixes)
                EXPECT_EQ(formatValue(value, unit), number + suffix);
            for (const auto& [unit, bytes] : sizes) {
                const bool fits = std::abs(value * bytes) < 0x1p63;
                const auto size = fits ? UserLocale{}.byteCount(std::int64_t(value * bytes))
                                       : number + " " + unit;
                EXPECT_EQ(formatValue(value, unit),
                          fits && unit.ends_with("/Second") ? size + "/s" : size);
            }
        }
    }
}

}  // namespace tessary::presentation
