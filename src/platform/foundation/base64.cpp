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

/// Writes the first `count` of the four digits that stand for three bytes.
void writeFour(char* to, std::string_view bytes, std::size_t count) {
    const auto byte = [&](std::size_t i) -> std::uint32_t {
        return static_cast<unsigned char>(bytes[i]);
    };
    const std::uint32_t bits = byte(0) << 16U | byte(1) << 8U | byte(2);
    for (std::size_t i = 0; i < count; ++i) to[i] = alphabet[bits >> (18 - 6 * i) & 63U];
}

}  // namespace

void appendBase64(std::string& text, std::string_view bytes) {
    const std::size_t start = text.size();
    text.resize(start + (bytes.size() + 2) / 3 * 4, '=');
    char* to = text.data() + start;
    for (; bytes.size() >= 3; bytes.remove_prefix(3), to += 4) writeFour(to, bytes, 4);
    if (bytes.empty()) return;
    const std::array<char, 3> last{bytes.front(), bytes.size() == 2 ? bytes.back() : '\0', '\0'};
    writeFour(to, {last.data(), last.size()}, bytes.size() + 1);
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
