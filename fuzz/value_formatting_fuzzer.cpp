// Any two numbers with any unit in one of some locales: texts of one line and bounded length, in
// the order of the numbers, the sign in front and the unit behind.
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>
#include <utility>

#include "fuzzer.h"
#include "platform/foundation/utf8.h"
#include "presentation/value_formatting.h"

namespace tessary::fuzz {
namespace {

using locale::UserLocale;
using presentation::formatValue;

constexpr std::array locales{"en_US", "de_DE", "fr_FR", "ar_EG",      "hi_IN@numbers=deva",
                             "ja_JP", "he_IL", "sv_SE", "zh_Hant_TW", "no_such"};

struct Unit {
    const char* name{};
    const char* suffix{};
};
constexpr std::array plainUnits{Unit{"None", ""},
                                Unit{"Count", ""},
                                Unit{"Percent", "%"},
                                Unit{"Seconds", " s"},
                                Unit{"Milliseconds", " ms"},
                                Unit{"Microseconds", " \u00B5s"},
                                Unit{"Count/Second", "/s"},
                                Unit{"Terabytes", " Terabytes"}};
constexpr std::array sizeUnits{"Bytes", "Kilobytes", "Megabytes", "Gigabytes", "Bytes/Second"};

/// A double in full has 309 digits before the point; nine of them go with the magnitude.
constexpr std::size_t longestNumber = 309 - 9 + std::string_view{"-.0B"}.size();
/// Of a size in any locale, in bytes: a few digits and a word.
constexpr std::size_t longestSize = 64;

struct Magnitude {
    std::string_view mark{};
    double value{};
};
constexpr std::array magnitudes{
    Magnitude{"", 1},      Magnitude{"K", 1e3},    Magnitude{"M", 1e6},    Magnitude{"B", 1e9},
    Magnitude{" byte", 1}, Magnitude{" bytes", 1}, Magnitude{" KB", 1e3},  Magnitude{" MB", 1e6},
    Magnitude{" GB", 1e9}, Magnitude{" TB", 1e12}, Magnitude{" PB", 1e15}, Magnitude{" EB", 1e18}};

/// What a text says, "12.3K" or "1.5 MB", where it is one that the header describes.
double valueOf(const std::string& text) {
    if (text == "Zero KB") return 0;
    double number = 0;
    const char* const end = text.data() + text.size();
    const auto [behind, fault] =
        std::from_chars(text.data(), end, number, std::chars_format::fixed);
    require(fault == std::errc{}, "a text begins with a number", text);
    const std::string_view mark{behind, static_cast<std::size_t>(end - behind)};
    const auto* const known = std::ranges::find(magnitudes, mark, &Magnitude::mark);
    require(known != magnitudes.end(), "a number ends in a known magnitude", text);
    return number * known->value;
}

void checkOrder(double low, double high, const std::optional<std::string>& unit) {
    if (!(low <= high)) return std::isnan(low + high) ? void() : checkOrder(high, low, unit);
    const std::string lowText = formatValue(low, unit, {});
    const std::string highText = formatValue(high, unit, {});
    require(valueOf(lowText) <= valueOf(highText), "a greater number does not say less",
            lowText + " < " + highText);
}

/// Half a step of what is shown, and a little for the sums of this fuzzer.
double largestError(double size) {
    constexpr std::array steps{std::pair{1.0, 0.01}, std::pair{1e2, 0.1}, std::pair{1e4, 1.0},
                               std::pair{1e6, 1e2}, std::pair{1e9, 1e5}};
    const auto* const step =
        std::ranges::upper_bound(steps, size, {}, [](auto s) { return s.first; });
    return (step == steps.end() ? 1e8 : step->second) / 2 * 1.001 + size * 1e-12;
}

void checkNumber(double value, const UserLocale& locale) {
    const std::string text = formatValue(value, {}, locale);
    require(!text.empty() && text.size() <= longestNumber, "a number is of bounded length", text);
    require(isOneLine(text), "a number is one line", text);
    for (const auto& [name, suffix] : plainUnits)
        require(formatValue(value, name, locale) == text + suffix, "a unit only adds its suffix",
                text);
    if (std::isnan(value)) return require(text == "nan", "no number says so", text);

    const std::string positive = formatValue(std::abs(value), {}, locale);
    require(positive[0] != '-', "a positive number has no sign", positive);
    require(text == (std::signbit(value) ? "-" + positive : positive), "the sign stands in front",
            text);
    if (std::isfinite(value))
        require(std::abs(valueOf(text) - value) <= largestError(std::abs(value)),
                "a text says its number", text);
}

/// Whether it is less than 64 bits of bytes even as gigabytes.
bool fitsEveryUnit(double value) { return std::abs(value) < 0x1p63 / 1e9; }

void checkSize(double value, const char* unit, const UserLocale& locale) {
    const std::string text = formatValue(value, unit, locale);
    require(isOneLine(text) && !text.empty(), "a size is one line", text);
    const bool isSize = !text.ends_with(std::string{" "} + unit);
    if (!isSize)
        require(text == formatValue(value, {}, locale) + " " + unit, "else it is a number", text);
    else
        require(text.size() <= longestSize, "a size is of bounded length", text);
    require(isSize || !fitsEveryUnit(value), "a size of 64 bits is the locale's", text);
}

void checkUnknown(double value, const std::string& unit, const UserLocale& locale) {
    const bool known = std::ranges::find(plainUnits, unit, &Unit::name) != plainUnits.end() ||
                       std::ranges::find(sizeUnits, std::string_view{unit}) != sizeUnits.end();
    if (known) return;
    require(formatValue(value, unit, locale) == formatValue(value, {}, locale) + " " + unit,
            "an unknown unit follows as it is", unit);
}

}  // namespace

void fuzz(std::string_view bytes) {
    Choices choices{bytes};
    const UserLocale locale{choices.oneOf(locales)};
    const double first = choices.number();
    const double second = choices.number();
    checkNumber(first, locale);
    checkOrder(first, second, {});
    for (const char* const unit : sizeUnits) checkSize(first, unit, locale);
    checkUnknown(first, std::string{choices.rest()}, locale);
    for (const char* const unit : {"Bytes", "Kilobytes", "Megabytes", "Gigabytes"})
        if (fitsEveryUnit(first) && fitsEveryUnit(second)) checkOrder(first, second, unit);
}

}  // namespace tessary::fuzz
