// Bytes as text, for places that take only text: base64 of RFC 4648, padded, on one line.
//
//     base64("Ma")                                        // "TWE="
//     decodeBase64("TWE=")                                // "Ma"
//     decodeBase64("TWE")                                 // none: its padding is missing
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tessary::foundation {

/// A member of a record that JSON holds as base64.
struct Bytes {
    std::string value{};
    bool operator==(const Bytes&) const = default;
};

void appendBase64(std::string& text, std::string_view bytes);
std::string base64(std::string_view bytes);

/// None where the text is anything else, down to bits of the last character that belong to no byte.
std::optional<std::string> decodeBase64(std::string_view text);

}  // namespace tessary::foundation
