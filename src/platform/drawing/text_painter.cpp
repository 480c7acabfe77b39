#include "platform/drawing/text_painter.h"

#include <algorithm>

#include "platform/foundation/utf8.h"

namespace tessary::drawing {

namespace {

/// What would control a terminal, or break a line.
bool isControl(char32_t code) {
    return code < 0x20 || (code >= 0x7F && code < 0xA0) || code == 0x2028 || code == 0x2029;
}

/// The text in one line, with a space for each control.
std::string plain(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        const auto [code, length] = foundation::leadingCharacter(text);
        const auto bytes = text.substr(0, std::max<std::size_t>(length, 1));
        result += length > 0 && isControl(code) ? " " : bytes;
        text.remove_prefix(bytes.size());
    }
    return result;
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
