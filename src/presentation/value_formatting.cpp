#include "presentation/value_formatting.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <string_view>

#include "platform/foundation/numbers.h"

namespace tessary::presentation {
namespace {

struct UnitRule {
    std::string_view name{};
    std::string_view suffix{};
    double bytes{};  ///< what one of the unit is; zero where it measures no size
};

constexpr std::array<UnitRule, 12> unitRules{{
    {"Bytes", "", 1},
    {"Kilobytes", "", 1e3},
    {"Megabytes", "", 1e6},
    {"Gigabytes", "", 1e9},
    {"Bytes/Second", "/s", 1},
    {"None", ""},
    {"Count", ""},
    {"Percent", "%"},
    {"Seconds", " s"},
    {"Milliseconds", " ms"},
    {"Microseconds", " \u00B5s"},
    {"Count/Second", "/s"},
}};

struct Magnitude {
    double from{};
    double divisor{};
    char suffix{};
};

/// Thousands are written out up to ten of them.
constexpr std::array<Magnitude, 3> magnitudes{{{1e9, 1e9, 'B'}, {1e6, 1e6, 'M'}, {1e4, 1e3, 'K'}}};

/// As printf's "%.*f" in the C locale: the exact binary value, ties to even.
std::string fixed(double value, int decimals) {
    if (std::isnan(value)) return "nan";  // without the sign that some have
    return foundation::digits(value, std::chars_format::fixed, decimals);
}

/// At most a few digits and a magnitude. The result is not looked at again: 999999 is "1000.0K".
std::string compact(double value) {
    const double size = std::abs(value);
    for (const auto& [from, divisor, suffix] : magnitudes)
        if (size >= from) return fixed(value / divisor, 1) + suffix;
    if (size >= 100 || value == std::round(value)) return fixed(value, 0);
    return fixed(value, size >= 1 ? 1 : 2);
}

/// The whole part, where 64 bits hold it.
std::optional<std::int64_t> truncated(double value) {
    const bool fits = value >= -0x1p63 && value < 0x1p63;  // false for no number, too
    if (!fits) return std::nullopt;
    return static_cast<std::int64_t>(value);
}

}  // namespace

std::string formatValue(double value, const std::optional<std::string>& unit,
                        const locale::UserLocale& locale) {
    if (!unit) return compact(value);
    const auto* const rule = std::ranges::find(unitRules, *unit, &UnitRule::name);
    const bool isKnown = rule != unitRules.end();
    const bool isSize = isKnown && rule->bytes > 0;
    const auto bytes = isSize ? truncated(value * rule->bytes) : std::nullopt;
    if (bytes) return locale.byteCount(*bytes).append(rule->suffix);
    if (!isKnown || isSize) return compact(value) + " " + *unit;
    return compact(value).append(rule->suffix);
}

}  // namespace tessary::presentation
