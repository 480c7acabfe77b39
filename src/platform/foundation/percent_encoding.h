// Texts as parts of a URL, and back.
//
//     percentEncoded("a/b é")            // "a%2Fb%20%C3%A9"
//     percentDecoded("a%2fb+c")          // "a/b+c"
//     percentDecoded("50%"), percentDecoded("a b"), percentDecoded("%FF")      // none
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tessary::foundation {

/// The text with every byte but the unreserved ones (ASCII letters, digits and -._~) as % and two
/// hexadecimal digits, so that it can be any part of a URL.
std::string percentEncoded(std::string_view text);

/// The text that a part of a URL stands for; "+" is no blank. None where a % does not stand before
/// two hexadecimal digits, a byte is not visible ASCII, or what comes of it is not UTF-8.
std::optional<std::string> percentDecoded(std::string_view part);

}  // namespace tessary::foundation
