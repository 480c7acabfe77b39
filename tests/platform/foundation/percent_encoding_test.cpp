#include "platform/foundation/percent_encoding.h"

#include <gtest/gtest.h>

namespace tessary::foundation {

TEST(PercentEncoding, KeepsTheUnreservedCharactersAlone) {
    std::string all, decoded, kept;
    for (int byte = 0; byte < 256; ++byte) all += static_cast<char>(byte);
    const auto encoded = percentEncoded(all);
    for (std::size_t at = 0; at < encoded.size(); ++at) {
        const bool isKept = encoded[at] != '%';
        if (isKept) kept += encoded[at];
        decoded += isKept ? encoded[at]
                          : static_cast<char>(std::stoi(encoded.substr(at + 1, 2), nullptr, 16));
        at += isKept ? 0 : 2;
    }
    EXPECT_EQ(decoded, all);
    EXPECT_EQ(kept, "-.0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ_abcdefghijklmnopqrstuvwxyz~");
    EXPECT_EQ(percentEncoded(""), "");
    EXPECT_EQ(percentEncoded("a b/c+d%20é🎉"), "a%20b%2Fc%2Bd%2520%C3%A9%F0%9F%8E%89");
}

}  // namespace tessary::foundation
