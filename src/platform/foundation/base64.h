// Bytes as text, for places that take only text.
#pragma once

#include <string>
#include <string_view>

namespace tessary::foundation {

/// Base64 of RFC 4648, padded, on one line: base64("Ma") is "TWE=".
std::string base64(std::string_view bytes);

}  // namespace tessary::foundation
