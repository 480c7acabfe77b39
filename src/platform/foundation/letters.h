// ASCII letters, the same in every locale.
//
//     inSmallLetters("Région A")      // "région a"
#pragma once

#include <string>
#include <string_view>

namespace tessary::foundation {

/// A capital as its small letter; any other byte as it is.
constexpr char small(char letter) {
    const bool isCapital = letter >= 'A' && letter <= 'Z';
    return isCapital ? static_cast<char>(letter + ('a' - 'A')) : letter;
}

inline std::string inSmallLetters(std::string_view text) {
    std::string result{text};
    for (char& letter : result) letter = small(letter);
    return result;
}

}  // namespace tessary::foundation
