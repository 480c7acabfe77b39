// Texts as parts of a URL.
#pragma once

#include <string>
#include <string_view>

namespace tessary::foundation {

/// The text with every byte but the unreserved ones (ASCII letters, digits and -._~) as % and two
/// hexadecimal digits, so that it can be any part of a URL: "a/b é" gives "a%2Fb%20%C3%A9".
std::string percentEncoded(std::string_view text);

}  // namespace tessary::foundation
