// UTF-8 taken apart, and well-formed told from other bytes, for texts that come from anywhere.
//
//     leadingCharacterLength("\xC3\xA9t\xC3\xA9")         // 2: an e with an acute accent
//     leadingCharacterLength("\xC3t")                     // 0: the second byte is missing
//     leadingCharacter("\xC3\xA9t").code                  // U+00E9
#pragma once

#include <cstddef>
#include <string_view>

namespace tessary::foundation {

/// The bytes that the character at the start of `text` takes, 1 to 4; 0 where no well-formed one
/// starts: an empty text, a stray or missing continuation byte, an overlong form, a surrogate, a
/// value above U+10FFFF.
std::size_t leadingCharacterLength(std::string_view text);

/// A character and its length in bytes.
struct Character {
    char32_t code{};
    std::size_t length{};
};

/// The character at the start of `text`; of length 0 where no well-formed one starts.
Character leadingCharacter(std::string_view text);

/// Whether all of `text` is well-formed; an empty one is.
bool isUTF8(std::string_view text);

}  // namespace tessary::foundation
