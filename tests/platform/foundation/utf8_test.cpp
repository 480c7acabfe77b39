#include "platform/foundation/utf8.h"

#include <gtest/gtest.h>
#include <string>

namespace tessary::foundation {

/// What the encoding's bit layout gives for any number, allowed or not.
static std::string encoded(unsigned point, std::size_t length) {
    std::string bytes;
    for (std::size_t rest = 1; rest < length; ++rest, point >>= 6U)
        bytes.insert(bytes.begin(), static_cast<char>(0x80 | (point & 0x3F)));
    return static_cast<char>((length == 1 ? 0U : 0xF00U >> length) | point) + bytes;
}

TEST(UTF8, TakesEveryCharacterInItsShortestFormOnly) {
    for (unsigned point = 0; point < 0x120000;
         point += point < 0x11000 || point > 0x10FF00 ? 1 : 61) {
        const std::size_t shortest = point < 0x80 ? 1 : point < 0x800 ? 2 : point < 0x10000 ? 3 : 4;
        const bool isCharacter = point <= 0x10FFFF && (point < 0xD800 || point > 0xDFFF);
        const auto bytes = encoded(point, shortest);
        ASSERT_EQ(leadingCharacterLength(bytes + "\x80"), isCharacter ? shortest : 0) << point;
        ASSERT_EQ(isUTF8("a" + bytes + "z"), isCharacter) << point;
        for (std::size_t cut = 1; cut < shortest; ++cut)
            ASSERT_FALSE(isUTF8(bytes.substr(0, cut)) || isUTF8(bytes.substr(0, cut) + "x"));
        for (auto length = shortest + 1; length <= 4; ++length)
            ASSERT_FALSE(isUTF8(encoded(point, length))) << point;
    }
    for (int lead = 0x80; lead <= 0xFF; ++lead)
        EXPECT_FALSE(isUTF8(std::string(1, static_cast<char>(lead)) + "\x80\x80\x80\x80"));
}

}  // namespace tessary::foundation
