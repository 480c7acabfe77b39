// A line cut into words as a shell does, without a shell, and a word as a shell takes it.
//
//     shellWords(R"(/bin/keys --for "my team" it\'s)")    // "/bin/keys", "--for", "my team", "it's"
//     shellWords("'open")                                 // none: the quote has no end
//     shellWord("my team")                // "'my team'"
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessary::aws {

/// Quotes and backslashes mean what they mean there; nothing else does: no variable, no pattern and
/// no remark. None where a quote is left open, or nothing stands behind a backslash.
std::optional<std::vector<std::string>> shellWords(std::string_view line);

/// As it is where nothing in it means anything to a shell, else in quotes.
std::string shellWord(const std::string& word);

}  // namespace tessary::aws
