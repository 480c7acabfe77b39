#include "platform/foundation/visible_text.h"

#include <clocale>
#include <cwchar>

#include "platform/foundation/utf8.h"

namespace tessary::foundation {

namespace {

/// Later controls, soft hyphens, joiners, marks and overrides of direction, line separators, the
/// byte order mark.
bool isUnseen(char32_t code) {
    return (code >= 0x80 && code < 0xA0) || code == 0xAD || code == 0x61C ||
           (code >= 0x200B && code <= 0x200F) || (code >= 0x2028 && code <= 0x202E) ||
           (code >= 0x2060 && code <= 0x206F) || code == 0xFEFF;
}

/// How wide the C library takes a character to be, whatever the process's own locale.
int cells(char32_t code) {
    static const locale_t locale = ::newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    if (locale == nullptr) return 1;
    const locale_t former = ::uselocale(locale);
    const int width = ::wcwidth(static_cast<wchar_t>(code));
    ::uselocale(former);
    return width < 0 ? 1 : width;
}

/// The picture of an ASCII control.
std::string controlPicture(char control) {
    if (control == '\t') return "→";
    if (control == '\x7F') return "␡";
    return {'\xE2', '\x90', static_cast<char>(0x80 + control)};
}

}  // namespace

VisibleCharacter firstVisible(std::string_view text) {
    const auto [code, length] = leadingCharacter(text);
    if (length == 0) return {"�", 1, 1};
    if (code < ' ' || code == 0x7F) return {controlPicture(text[0]), 1, 1};
    if (isUnseen(code)) return {"�", 1, length};
    return {std::string{text.substr(0, length)}, cells(code), length};
}

std::string visible(std::string_view text, std::size_t most) {
    std::string shown;
    std::size_t cells = 0;
    std::size_t cut = 0;  // where the ellipsis goes, should it be needed
    while (!text.empty()) {
        const VisibleCharacter character = firstVisible(text);
        cells += static_cast<std::size_t>(character.cells);
        if (cells > most) return shown.substr(0, cut) + "…";
        shown += character.shown;
        if (cells < most) cut = shown.size();
        text.remove_prefix(character.length);
    }
    return shown;
}

}  // namespace tessary::foundation
