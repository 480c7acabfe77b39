#include "platform/foundation/percent_encoding.h"

#include "platform/foundation/numbers.h"
#include "platform/foundation/utf8.h"

namespace tessary::foundation {
namespace {

constexpr std::string_view unreserved =
    "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-._~";

/// Of two hexadecimal digits.
std::optional<char> byteOf(std::string_view digits) {
    constexpr int hexadecimalBase = 16;
    const auto number = parsed<unsigned char>(digits, hexadecimalBase);
    if (digits.size() != 2 || !number) return std::nullopt;
    return static_cast<char>(*number);
}

}  // namespace

std::string percentEncoded(std::string_view text) {
    std::string encoded;
    for (const char character : text) {
        if (unreserved.find(character) != std::string_view::npos) {
            encoded += character;
            continue;
        }
        encoded += '%' + hexadecimal(character);
    }
    return encoded;
}

std::optional<std::string> percentDecoded(std::string_view part) {
    std::string text;
    for (std::size_t at = 0; at < part.size(); ++at) {
        if (part[at] <= ' ' || part[at] > '~') return std::nullopt;
        if (part[at] != '%') {
            text += part[at];
            continue;
        }
        const auto byte = byteOf(part.substr(at + 1, 2));
        if (!byte) return std::nullopt;
        text += *byte;
        at += 2;
    }
    return isUTF8(text) ? std::optional{text} : std::nullopt;
}

}  // namespace tessary::foundation
