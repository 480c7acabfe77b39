#include "feed/aws/ini.h"

#include "platform/foundation/letters.h"

namespace tessary::aws {

namespace {

constexpr std::string_view blanks = " \t\r\f\v";

std::string_view trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(blanks);
    if (first == text.npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) + 1 - first);
}

std::string_view unquoted(std::string_view text) {
    const bool isQuoted =
        text.size() > 1 && (text.front() == '"' || text.front() == '\'') && text.back() == text[0];
    return isQuoted ? text.substr(1, text.size() - 2) : text;
}

/// [name], [profile name] or [profile "a name"].
Section sectionOf(std::string_view heading) {
    const auto blank = heading.find_first_of(blanks);
    if (blank == heading.npos) return {.name = std::string{unquoted(heading)}};
    return {.kind = std::string{heading.substr(0, blank)},
            .name = std::string{unquoted(trimmed(heading.substr(blank)))}};
}

void take(std::string_view line, std::vector<Section>& sections) {
    const bool isNested = !line.empty() && blanks.find(line.front()) != blanks.npos;
    line = trimmed(line);
    if (line.empty() || line.front() == '#' || line.front() == ';') return;
    if (line.front() == '[' && line.find(']') != line.npos) {
        sections.push_back(sectionOf(trimmed(line.substr(1, line.find(']') - 1))));
        return;
    }
    const auto equals = line.find_first_of("=:");
    if (isNested || equals == line.npos || equals == 0 || sections.empty()) return;
    sections.back().settings.insert_or_assign(
        foundation::inSmallLetters(trimmed(line.substr(0, equals))),
        trimmed(line.substr(equals + 1)));
}

}  // namespace

std::vector<Section> parseINI(std::string_view text) {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (text.starts_with(byteOrderMark)) text.remove_prefix(byteOrderMark.size());
    std::vector<Section> sections;
    while (!text.empty()) {
        const auto end = text.find('\n');
        take(text.substr(0, end), sections);
        text.remove_prefix(end == text.npos ? text.size() : end + 1);
    }
    return sections;
}

}  // namespace tessary::aws
