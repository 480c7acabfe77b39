#include "platform/foundation/json_numbers.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <limits>
#include <string>
#include <system_error>

#include "platform/foundation/numbers.h"

namespace tessary::foundation {
namespace {

constexpr std::int64_t largestExponent = 1'000'000'000'000'000;

bool skip(std::string_view& rest, char wanted) {
    if (!rest.starts_with(wanted)) return false;
    rest.remove_prefix(1);
    return true;
}

std::string_view skipDigits(std::string_view& rest) {
    const auto length = std::min(rest.find_first_not_of("0123456789"), rest.size());
    const auto digits = rest.substr(0, length);
    rest.remove_prefix(length);
    return digits;
}

std::int64_t exponentValue(std::string_view digits, bool isNegative) {
    std::int64_t value = 0;
    for (const char digit : digits) value = std::min(value * 10 + (digit - '0'), largestExponent);
    return isNegative ? -value : value;
}

/// Takes an exponent from the front where one stands there; false when it lacks its digits.
bool readExponent(std::string_view& rest, std::int64_t& exponent) {
    if (!skip(rest, 'e') && !skip(rest, 'E')) return true;
    const bool isNegative = skip(rest, '-');
    if (!isNegative) skip(rest, '+');
    const auto digits = skipDigits(rest);
    exponent = exponentValue(digits, isNegative);
    return !digits.empty();
}

/// The number without point, leading and trailing zeros: `digits` times ten to `exponent`; no
/// digits for zero.
struct Scaled {
    std::string digits{};
    std::int64_t exponent{};
};

Scaled scaled(const WrittenNumber& number) {
    Scaled result{std::string{number.whole}.append(number.fraction), number.exponent};
    result.exponent -= static_cast<std::int64_t>(number.fraction.size());
    const auto kept = result.digits.find_last_not_of('0') + 1;
    result.exponent += static_cast<std::int64_t>(result.digits.size() - kept);
    result.digits.resize(kept);
    result.digits.erase(0, result.digits.find_first_not_of('0'));
    return result;
}

}  // namespace

std::optional<WrittenNumber> readNumber(std::string_view text) {
    WrittenNumber number{.text = text};
    auto rest = text;
    number.isNegative = skip(rest, '-');
    number.whole = skipDigits(rest);
    if (number.whole.empty()) return std::nullopt;
    if (number.whole.size() > 1 && number.whole.front() == '0') return std::nullopt;
    if (skip(rest, '.')) {
        number.fraction = skipDigits(rest);
        if (number.fraction.empty()) return std::nullopt;
    }
    if (!readExponent(rest, number.exponent) || !rest.empty()) return std::nullopt;
    return number;
}

std::optional<std::int64_t> asInteger(const WrittenNumber& number) {
    const bool isPlain = number.whole.end() == number.text.end();
    if (isPlain) return parsed<std::int64_t>(number.text);
    constexpr std::int64_t mostDigits = std::numeric_limits<std::int64_t>::digits10 + 1;
    auto [digits, exponent] = scaled(number);
    if (digits.empty()) return 0;
    if (exponent < 0 || std::ssize(digits) + exponent > mostDigits) return std::nullopt;
    digits.append(static_cast<std::size_t>(exponent), '0');
    return parsed<std::int64_t>(number.isNegative ? "-" + digits : digits);
}

std::optional<double> asDouble(const WrittenNumber& number) {
    double value = 0;
    const auto* const end = number.text.data() + number.text.size();
    const auto result = std::from_chars(number.text.data(), end, value);
    if (result.ec != std::errc::result_out_of_range) return value;
    const auto [digits, exponent] = scaled(number);
    const bool isTooSmall = std::ssize(digits) + exponent < 0;
    if (!isTooSmall) return std::nullopt;
    return number.isNegative ? -0.0 : 0.0;
}

}  // namespace tessary::foundation
