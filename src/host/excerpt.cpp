#include "host/excerpt.h"

#include <algorithm>
#include <deque>

#include "host/visible_text.h"

namespace tessary::host {

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

/// The end of a text, no longer than fits.
class Tail {
public:
    void add(VisibleCharacter character) {
        cells_ += static_cast<std::size_t>(character.cells);
        characters_.push_back(std::move(character));
        while (cells_ > cellsBefore) {
            cells_ -= static_cast<std::size_t>(characters_.front().cells);
            characters_.pop_front();
            isCut_ = true;
        }
    }
    std::size_t cells() const { return cells_ + (isCut_ ? 1 : 0); }
    std::string text() const {
        std::string text = isCut_ ? "…" : "";
        for (const VisibleCharacter& character : characters_) text += character.shown;
        return text;
    }

private:
    std::deque<VisibleCharacter> characters_{};
    std::size_t cells_{};
    bool isCut_{};
};

}  // namespace

Excerpt excerptAt(std::string_view text, std::size_t offset) {
    const std::size_t place = placeIn(text, offset);
    const std::string_view before = text.substr(0, place);
    const std::size_t start = before.rfind('\n') + 1;  // 0 in the first line
    const std::string_view line = lineAround(text, start);

    Excerpt excerpt;
    excerpt.line += static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n'));
    Tail tail;
    bool isIndentation = true;
    std::size_t at = 0;
    while (at < std::min(place - start, line.size())) {
        VisibleCharacter character = firstVisible(line.substr(at));
        if (isIndentation && line[at] == '\t') character.shown = " ";
        isIndentation = isIndentation && character.shown == " ";
        at += character.length;
        ++excerpt.column;
        tail.add(std::move(character));
    }
    excerpt.text = tail.text() + visible(line.substr(at), cellsBehind);
    excerpt.caret = std::string(tail.cells(), ' ') + '^';
    return excerpt;
}

}  // namespace tessary::host
