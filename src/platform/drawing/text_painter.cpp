#include "platform/drawing/text_painter.h"

namespace tessary::drawing {

namespace {

/// The text in one line: every control character, those of two bytes included, as a space.
std::string plain(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        const auto next = static_cast<unsigned char>(i + 1 < text.size() ? text[i + 1] : 0);
        const bool twoByteControl = byte == 0xC2 && next >= 0x80 && next < 0xA0;
        const bool control = byte < 0x20 || byte == 0x7F || twoByteControl;
        result += control ? ' ' : text[i];
        if (twoByteControl) ++i;
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
