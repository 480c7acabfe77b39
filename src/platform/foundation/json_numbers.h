// JSON's numbers as they are written, before they become an integer or a double.
//
//     asInteger(*readNumber("1200e-2"))                   // 12
//     asInteger(*readNumber("1e-2"))                      // none: not whole
//     asDouble(*readNumber("1e400"))                      // none: it overflows
//     readNumber("01")                                    // none: not JSON's grammar
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace tessary::foundation {

/// A number of any length, taken apart; the views last as long as the text that was read.
struct WrittenNumber {
    std::string_view text{};      ///< all of it
    std::string_view whole{};     ///< the digits before the point, at least one
    std::string_view fraction{};  ///< the digits after it, perhaps none
    std::int64_t exponent{};      ///< of ten; beyond ±10^15 it stays there
    bool isNegative{};
};

/// `text` as one JSON number from start to end; none when it isn't one.
std::optional<WrittenNumber> readNumber(std::string_view text);

/// The exact value where it is a whole number of 64 bits: 300.0, 3e2, -0, 0e99, 1200e-2.
std::optional<std::int64_t> asInteger(const WrittenNumber& number);

/// The nearest double, zero where the number is too small for one; none where it overflows.
std::optional<double> asDouble(const WrittenNumber& number);

}  // namespace tessary::foundation
