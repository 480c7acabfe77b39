// The way back from a URL's part to the bytes, written without a look at how they are encoded.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tessary::fuzz {

/// RFC 3986, 2.3: the characters that are never encoded.
inline bool isUnreserved(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           (character >= '0' && character <= '9') || character == '-' || character == '.' ||
           character == '_' || character == '~';
}

/// 0 to 15 of a capital hexadecimal digit; -1 of anything else.
inline int digitValue(char digit) {
    if (digit >= '0' && digit <= '9') return digit - '0';
    return digit >= 'A' && digit <= 'F' ? digit - 'A' + 10 : -1;
}

/// None where a character is neither unreserved nor "%" before two capital hexadecimal digits, and
/// where one is encoded that need not be.
inline std::optional<std::string> percentDecoded(std::string_view text) {
    std::string bytes;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (isUnreserved(text[i])) {
            bytes += text[i];
            continue;
        }
        if (text[i] != '%' || i + 2 >= text.size()) return std::nullopt;
        const int high = digitValue(text[i + 1]);
        const int low = digitValue(text[i + 2]);
        if (high < 0 || low < 0) return std::nullopt;
        bytes += static_cast<char>(high * 16 + low);
        if (isUnreserved(bytes.back())) return std::nullopt;
        i += 2;
    }
    return bytes;
}

}  // namespace tessary::fuzz
