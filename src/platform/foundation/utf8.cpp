#include "platform/foundation/utf8.h"

#include <algorithm>

namespace tessary::foundation {
namespace {

struct ByteRange {
    unsigned char first{};
    unsigned char last{};

    constexpr bool holds(char byte) const {
        const auto value = static_cast<unsigned char>(byte);
        return value >= first && value <= last;
    }
};

/// The lead bytes that share a length and a range for the byte after them.
struct Form {
    ByteRange lead{};
    ByteRange second{};
    std::size_t length{};
};

constexpr ByteRange continuation{0x80, 0xBF};
constexpr Form forms[] = {
    {{0x00, 0x7F}, {}, 1},           {{0xC2, 0xDF}, continuation, 2},
    {{0xE0, 0xE0}, {0xA0, 0xBF}, 3}, {{0xE1, 0xEC}, continuation, 3},
    {{0xED, 0xED}, {0x80, 0x9F}, 3}, {{0xEE, 0xEF}, continuation, 3},
    {{0xF0, 0xF0}, {0x90, 0xBF}, 4}, {{0xF1, 0xF3}, continuation, 4},
    {{0xF4, 0xF4}, {0x80, 0x8F}, 4},
};

bool starts(const Form& form, std::string_view text) {
    if (text.size() < form.length) return false;
    if (form.length > 1 && !form.second.holds(text[1])) return false;
    return form.length < 3 || std::ranges::all_of(text.substr(2, form.length - 2), [](char byte) {
               return continuation.holds(byte);
           });
}

}  // namespace

std::size_t leadingCharacterLength(std::string_view text) {
    if (text.empty()) return 0;
    for (const auto& form : forms)
        if (form.lead.holds(text.front())) return starts(form, text) ? form.length : 0;
    return 0;
}

Character leadingCharacter(std::string_view text) {
    const auto length = leadingCharacterLength(text);
    if (length == 0) return {};
    const auto lead = static_cast<unsigned char>(text.front());
    char32_t code = length == 1 ? lead : lead & (0xFFU >> (length + 1));
    for (const char byte : text.substr(1, length - 1))
        code = (code << 6U) | (static_cast<unsigned char>(byte) & 0x3FU);
    return {code, length};
}

bool isUTF8(std::string_view text) {
    while (!text.empty()) {
        const auto length = leadingCharacterLength(text);
        if (length == 0) return false;
        text.remove_prefix(length);
    }
    return true;
}

}  // namespace tessary::foundation
