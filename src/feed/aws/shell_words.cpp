#include "feed/aws/shell_words.h"

namespace tessary::aws {

std::optional<std::vector<std::string>> shellWords(std::string_view line) {
    constexpr std::string_view escapedInQuotes = "$`\"\\";
    std::vector<std::string> words;
    bool isInWord = false;
    char quote = '\0';  // the one that is open
    for (std::size_t at = 0; at < line.size(); ++at) {
        const char c = line[at];
        const bool isOutside = quote == '\0';
        const bool isBlank = isOutside && (c == ' ' || c == '\t' || c == '\r' || c == '\n');
        if (!isBlank && !isInWord) words.emplace_back();
        isInWord = !isBlank;
        if (isBlank) continue;
        const bool escapes = c == '\\' && quote != '\'';
        if (c == quote) {
            quote = '\0';
        } else if (isOutside && (c == '"' || c == '\'')) {
            quote = c;
        } else if (!escapes) {
            words.back() += c;
        } else if (++at == line.size()) {
            return std::nullopt;
        } else {
            if (quote == '"' && escapedInQuotes.find(line[at]) == std::string_view::npos)
                words.back() += c;
            words.back() += line[at];
        }
    }
    return quote == '\0' ? std::optional{words} : std::nullopt;
}

std::string shellWord(const std::string& word) {
    constexpr std::string_view plain =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_-./@:+=";
    if (!word.empty() && word.find_first_not_of(plain) == word.npos) return word;
    std::string result = "'";
    for (const char c : word) result += c == '\'' ? "'\\''" : std::string{c};
    return result + "'";
}

}  // namespace tessary::aws
