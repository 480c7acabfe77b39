#include "platform/foundation/json_numbers.h"

#include <cmath>
#include <cstdlib>
#include <gtest/gtest.h>

#include "support/fixtures.h"

namespace tessary::foundation {

static auto integer(const std::string& text) { return asInteger(readNumber(text).value()); }

static std::string zeros(std::size_t count) { return std::string(count, '0'); }

TEST(JSONNumbers, AreIntegersByTheirValue) {
    for (const auto value : {INT64_C(1), INT64_C(-70), INT64_MAX, INT64_MIN, INT64_MIN + 1}) {
        const auto text = std::to_string(value);
        EXPECT_EQ(integer(text), value);
        for (std::size_t shift = 1; shift < 500; shift += 7) {
            EXPECT_EQ(integer(text + zeros(shift) + "e-" + std::to_string(shift)), value);
            EXPECT_EQ(integer(text + "." + zeros(shift)), value);
            EXPECT_FALSE(integer(text + "." + zeros(shift) + "1"));
            EXPECT_EQ(integer("0." + zeros(shift - 1) + "5e" + std::to_string(shift)), 5);
        }
    }
}

TEST(JSONNumbers, BecomeTheDoubleThatTheSystemReads) {
    auto cases = words(R"(42 9007199254740993 1.7976931348623157e308 1.7976931348623159e308 5e-324
        1e400 -1e400 1e99999999999999999999 0e999999999999 1e-400 -1e-400 -0
        1e-99999999999999999999 9007199254740993.)" +
                       zeros(400) + "1");
    for (const auto* end : {"", "e-200", "e-710"}) cases.push_back(std::string(400, '9') + end);
    for (const auto* end : {"1", "1e401", "1e709", "1e710"})
        cases.push_back("0." + zeros(400) + end);
    for (const auto& text : cases) {
        const double expected = std::strtod(text.c_str(), nullptr);
        const auto number = asDouble(readNumber(text).value());
        ASSERT_EQ(number.value_or(std::copysign(INFINITY, expected)), expected) << text;
        EXPECT_EQ(std::signbit(number.value_or(expected)), std::signbit(expected)) << text;
    }
}

}  // namespace tessary::foundation
