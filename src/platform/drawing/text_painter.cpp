#include "platform/drawing/text_painter.h"

#include <algorithm>

#include "platform/foundation/utf8.h"

namespace tessary::drawing {

namespace {

/// What would control a terminal, or break a line.
bool isControl(char32_t code) {
    return code < 0x20 || (code >= 0x7F && code < 0xA0) || code == 0x2028 || code == 0x2029;
}

/// The marks that reorder what stands behind them, from their beginnings to their ends. What a text
/// leaves open would reorder whatever a terminal or a status bar shows behind it.
class OpenMarks {
public:
    /// Whether the character is anything but an end without a beginning.
    bool meets(char32_t code) {
        const bool isIsolate = code >= 0x2066 && code <= 0x2068;
        const bool isEmbedding =
            code == 0x202A || code == 0x202B || code == 0x202D || code == 0x202E;
        if (isIsolate || isEmbedding) open_ += isIsolate ? isolate : embedding;
        if (code == 0x202C) {
            if (!open_.ends_with(embedding)) return false;
            open_.pop_back();
        }
        if (code == 0x2069) {  // it ends the embeddings in it, too
            const auto last = open_.rfind(isolate);
            if (last == open_.npos) return false;
            open_.resize(last);
        }
        return true;
    }
    std::string ends() const {
        std::string marks;
        for (auto each = open_.rbegin(); each != open_.rend(); ++each)
            marks += *each == isolate ? "\u2069" : "\u202C";
        return marks;
    }

private:
    static constexpr char isolate = 'i', embedding = 'e';
    std::string open_{};
};

/// The text in one line, with a space for each control.
std::string plain(std::string_view text) {
    std::string result;
    OpenMarks open;
    while (!text.empty()) {
        const auto [code, length] = foundation::leadingCharacter(text);
        const auto bytes = text.substr(0, std::max<std::size_t>(length, 1));
        if (length > 0 && isControl(code))
            result += ' ';
        else if (open.meets(code))
            result += bytes;
        text.remove_prefix(bytes.size());
    }
    return result + open.ends();
}

}  // namespace

std::string paintText(const views::DisplayList& list) {
    std::string result;
    for (const views::Element& element : list.elements) {
        const auto* text = std::get_if<views::TextElement>(&element.content);
        if (text == nullptr || text->text.empty()) continue;
        if (!result.empty()) result += '\n';
        result += plain(text->text);
    }
    return result;
}

}  // namespace tessary::drawing
