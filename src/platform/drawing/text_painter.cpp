#include "platform/drawing/text_painter.h"

#include <algorithm>

namespace tessary::drawing {

namespace {

/// How many bytes the control character or line break at `at` takes; 0 where there is none.
std::size_t controlLength(std::string_view text, std::size_t at) {
    const auto byte = [&](std::size_t i) {
        return at + i < text.size() ? static_cast<unsigned char>(text[at + i]) : 0U;
    };
    if (byte(0) < 0x20 || byte(0) == 0x7F) return 1;
    if (byte(0) == 0xC2 && byte(1) >= 0x80 && byte(1) < 0xA0) return 2;
    const bool separator =
        byte(0) == 0xE2 && byte(1) == 0x80 && (byte(2) == 0xA8 || byte(2) == 0xA9);
    return separator ? 3 : 0;
}

/// The text in one line: what would control a terminal, or break the line, as a space.
std::string plain(std::string_view text) {
    std::string result;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t control = controlLength(text, at);
        result += control > 0 ? ' ' : text[at];
        at += std::max<std::size_t>(control, 1);
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
