#include "command/excerpt.h"

#include <algorithm>
#include <deque>

#include "platform/foundation/utf8.h"
#include "platform/foundation/visible_text.h"

namespace tessary::command {

using foundation::VisibleCharacter;

namespace {

constexpr std::size_t cellsBefore = 48;
constexpr std::size_t cellsBehind = 28;

std::size_t placeIn(std::string_view text, std::size_t offset) {
    if (offset < text.size()) return offset;
    return text.find_last_not_of(" \t\r\n") + 1;  // 0 where there is nothing else
}

std::string_view lineAround(std::string_view text, std::size_t start) {
    std::string_view line = text.substr(start, text.find('\n', start) - start);
    if (line.ends_with('\r')) line.remove_suffix(1);
    return line;
}

std::size_t countCharacters(std::string_view text) {
    std::size_t count = 0;
    for (; !text.empty(); ++count)
        text.remove_prefix(std::max<std::size_t>(foundation::leadingCharacterLength(text), 1));
    return count;
}

/// The last characters of a text, more of them than can be shown.
std::string_view tailOf(std::string_view text) {
    constexpr std::size_t enough = 8 * cellsBefore;  // bytes
    if (text.size() <= enough) return text;
    const auto isContinuation = [](char byte) { return (byte & '\xC0') == '\x80'; };
    text.remove_prefix(text.size() - enough);
    while (!text.empty() && isContinuation(text.front())) text.remove_prefix(1);
    return text;
}

struct ShownText {
    std::string text{};
    std::size_t cells{};
};

/// What lies before the place, no longer than fits. Tabs that indent are blanks.
ShownText shownBefore(std::string_view before) {
    const std::size_t indented = std::min(before.find_first_not_of(" \t"), before.size());
    const std::string_view tail = tailOf(before);
    bool isCut = tail.size() < before.size();
    std::size_t at = before.size() - tail.size();
    std::deque<VisibleCharacter> characters;
    std::size_t cells = 0;
    while (at < before.size()) {
        VisibleCharacter character = foundation::firstVisible(before.substr(at));
        if (at < indented) character.shown = " ";
        at += character.length;
        cells += static_cast<std::size_t>(character.cells);
        characters.push_back(std::move(character));
        for (; cells > cellsBefore; isCut = true) {
            cells -= static_cast<std::size_t>(characters.front().cells);
            characters.pop_front();
        }
    }
    ShownText shown{isCut ? "…" : "", cells + (isCut ? 1 : 0)};
    for (const VisibleCharacter& character : characters) shown.text += character.shown;
    return shown;
}

}  // namespace

Excerpt excerptAt(std::string_view text, std::size_t offset) {
    const std::size_t place = placeIn(text, offset);
    const std::string_view before = text.substr(0, place);
    const std::size_t start = before.rfind('\n') + 1;  // 0 in the first line
    const std::string_view line = lineAround(text, start);

    const std::size_t column = std::min(place - start, line.size());  // in bytes, from 0
    const ShownText shown = shownBefore(line.substr(0, column));

    return {
        .line = 1 + static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n')),
        .column = 1 + countCharacters(line.substr(0, column)),
        .text = shown.text + foundation::visible(line.substr(column), cellsBehind),
        .caret = std::string(shown.cells, ' ') + '^',
    };
}

}  // namespace tessary::command
