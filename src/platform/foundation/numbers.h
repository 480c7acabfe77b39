// Numbers as plain digits and back, the same in every locale.
//
//     digits(1.5)                                        // "1.5", the shortest that reads back
//     digits(2.0 / 3, std::chars_format::fixed, 2)       // "0.67", ties of the exact value to even
//     parsed<int>("12")                                  // 12
//     parsed<int>("12 "), parsed<int>("")                // none: all of the text has to be the number
//     hexadecimal('\xE9')                                // "E9"
#pragma once

#include <array>
#include <charconv>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace tessary::foundation {

/// A number by std::to_chars, in the form that the further arguments name.
template <class Number, class... Form>
std::string digits(Number number, Form... form) {
    std::array<char, 352> room;  // a double has 309 digits before the point at most
    const auto end = std::to_chars(room.data(), room.data() + room.size(), number, form...).ptr;
    return {room.data(), end};
}

/// The number that a whole text is, by std::from_chars; none for any other text and for a number
/// that the type cannot hold.
template <class Number, class... Form>
std::optional<Number> parsed(std::string_view text, Form... form) {
    Number number{};
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number, form...);
    return error == std::errc{} && stop == end ? std::optional{number} : std::nullopt;
}

/// A byte as two digits.
inline std::string hexadecimal(char byte) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    const auto value = static_cast<unsigned char>(byte);
    return {digits[value >> 4U], digits[value & 15U]};
}

}  // namespace tessary::foundation
