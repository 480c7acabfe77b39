#include "platform/foundation/percent_encoding.h"

#include <gtest/gtest.h>

namespace tessary::foundation {

TEST(PercentEncoding, KeepsTheUnreservedCharactersAlone) {
    std::string kept;
    for (int byte = 0; byte < 256; ++byte) {
        const std::string text(1, static_cast<char>(byte));
        if (percentEncoded(text) == text) kept += text;
    }
    EXPECT_EQ(kept, "-.0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ_abcdefghijklmnopqrstuvwxyz~");
    EXPECT_EQ(percentEncoded("a b/c+d%20é\x0F🎉"), "a%20b%2Fc%2Bd%2520%C3%A9%0F%F0%9F%8E%89");
}

}  // namespace tessary::foundation
