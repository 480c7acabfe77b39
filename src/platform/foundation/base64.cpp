#include "platform/foundation/base64.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace tessary::foundation {

namespace {

constexpr std::string_view alphabet =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::uint32_t noDigit = 64;

constexpr auto digitValues = [] {
    std::array<std::uint8_t, 256> result{};
    result.fill(noDigit);
    for (std::size_t i = 0; i < alphabet.size(); ++i)
        result[static_cast<unsigned char>(alphabet[i])] = static_cast<std::uint8_t>(i);
    return result;
}();

/// Appends what up to four digits stand for; false where one is none, or says more than whole
/// bytes.
bool appendFour(std::string& bytes, std::string_view group) {
    std::uint32_t bits = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        const std::uint32_t value =
            i < group.size() ? digitValues[static_cast<unsigned char>(group[i])] : 0;
        if (value == noDigit) return false;
        bits = bits << 6U | value;
    }
    for (std::size_t i = 0; i + 1 < group.size(); ++i, bits <<= 8U)
        bytes += static_cast<char>(bits >> 16U & 255U);
    return group.size() > 1 && (bits & 0xFFFFFFU) == 0;
}

}  // namespace

void appendBase64(std::string& text, std::string_view bytes) {
    for (std::size_t at = 0; at < bytes.size(); at += 3) {
        const std::size_t count = std::min<std::size_t>(bytes.size() - at, 3);
        std::uint32_t group = 0;
        for (std::size_t i = 0; i < 3; ++i)
            group = group << 8U | (i < count ? static_cast<unsigned char>(bytes[at + i]) : 0U);
        for (std::size_t i = 0; i < 4; ++i)
            text += i <= count ? alphabet[group >> (18 - 6 * i) & 63U] : '=';
    }
}

std::string base64(std::string_view bytes) {
    std::string text;
    appendBase64(text, bytes);
    return text;
}

std::optional<std::string> decodeBase64(std::string_view text) {
    if (text.size() % 4 != 0) return std::nullopt;
    for (int padding = 0; padding < 2 && text.ends_with('='); ++padding) text.remove_suffix(1);
    std::string bytes;
    bytes.reserve(text.size() / 4 * 3 + 2);
    for (std::size_t at = 0; at < text.size(); at += 4)
        if (!appendFour(bytes, text.substr(at, 4))) return std::nullopt;
    return bytes;
}

}  // namespace tessary::foundation
