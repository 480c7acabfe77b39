#include "platform/foundation/base64.h"

#include <gtest/gtest.h>

#include "support/fixtures.h"

namespace tessary::foundation {

TEST(Base64, BringsBackEveryByteAtEveryPlace) {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte) bytes += static_cast<char>(byte);
    bytes += std::string{bytes.rbegin(), bytes.rend()} + "\xFF";
    for (std::size_t length = 0; length <= bytes.size(); ++length)
        EXPECT_EQ(decodeBase64(base64(bytes.substr(0, length))), bytes.substr(0, length));
    for (const auto& [plain, coded] : pairs("M=TQ== Ma=TWE= Man=TWFu \xFB\xFF=+/8="))
        EXPECT_EQ(base64(plain), coded);
}

TEST(Base64, TakesNothingElse) {
    for (const auto& text :
         words("= == === ==== A A= AA AAA A=== AA=A =AAA TQ==TQ== TR== TWF= TW%3 "
               "TWE\n AAAAA AAAA= TWE-"))
        EXPECT_EQ(decodeBase64(text), std::nullopt) << text;
}

}  // namespace tessary::foundation
