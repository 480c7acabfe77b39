// The place in a text where something is wrong, as editors count it, and a look at it.
//
//     const Excerpt at = excerptAt("{\n  \"t\": 1.5\n}", 9);
//     at.line, at.column        // 2, 8
//     at.text                   // "  \"t\": 1.5"
//     at.caret                  // "       ^"
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tessary::command {

struct Excerpt {
    std::size_t line{1};
    std::size_t column{1};  ///< in characters; a byte that is not UTF-8 is one, too
    std::string text{};     ///< the line, made visible; of a long one what lies around the place
    std::string caret{};    ///< blanks and a caret, which stands below the place
    bool operator==(const Excerpt&) const = default;
};

/// `offset` counts bytes. The end of a text is shown behind its last character that is no white
/// space. Lines end with a line feed; a carriage return before it belongs to the end.
Excerpt excerptAt(std::string_view text, std::size_t offset);

}  // namespace tessary::command
