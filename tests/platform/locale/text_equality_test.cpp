#include "platform/locale/text_equality.h"

#include <gtest/gtest.h>

#include "support/fixtures.h"

namespace tessary::locale {

TEST(TextEquality, IsCanonicalEquivalence) {
    const auto expect = [](bool areEqual, const std::string& rows) {
        for (const auto& [a, b] : pairs(rows)) {
            EXPECT_EQ(canonicallyEqual(a, b), areEqual) << a << ' ' << b;
            EXPECT_EQ(canonicallyEqual(b, a), areEqual) << b << ' ' << a;
            EXPECT_EQ(canonicalForm(a) == canonicalForm(b), areEqual) << a << ' ' << b;
        }
    };
    expect(
        true,
        "= a=a é=e\u0301 \u212B=\u00C5 한=\u1112\u1161\u11AB q\u0307\u0323=q\u0323\u0307 ;=\u037E "
        "a\u0300\u0301=\u00E0\u0301 Ω=\u2126 \U0001D160=\U0001D158\U0001D165\U0001D16E");
    expect(false,
           "=a a=b é=e É=é fi=\uFB01 a=\u0430 Ω=ω 한=\u1112\u1161 a\u0300\u0301=a\u0301\u0300 "
           "\u00B2=2 e=\u0301 \xFF=\xFE é=\xC3 \xFFé=\xFF\x65\u0301 \xFF=\uFFFD");
    EXPECT_TRUE(canonicallyEqual("\xFFé", "\xFFé"));
    EXPECT_TRUE(canonicallyEqual({"\0é", 3}, {"\0e\u0301", 4}));
    EXPECT_FALSE(canonicallyEqual({"é\0a", 4}, {"e\u0301\0b", 5}));
}

}  // namespace tessary::locale
