// Whether two texts are the same to a reader, however their characters are composed.
//
//     canonicallyEqual("\u00E9", "e\u0301")               // true: é, and e with a combining accent
//     canonicallyEqual("\u212B", "\u00C5")                // true: the ångström sign and Å
//     canonicallyEqual("\uFB01", "fi")                    // false: a ligature only looks alike
#pragma once

#include <string>
#include <string_view>

namespace tessary::locale {

/// Canonical equivalence of two UTF-8 texts; neither is rewritten. Case, compatibility forms and
/// look-alikes differ, a NUL is a character like others. A text that is no well-formed UTF-8, or
/// that exceeds 512 MiB, equals only the same bytes.
bool canonicallyEqual(std::string_view a, std::string_view b);

/// The same bytes for texts that are canonically equal, and for no others: for finding equals among
/// many.
std::string canonicalForm(std::string_view text);

}  // namespace tessary::locale
