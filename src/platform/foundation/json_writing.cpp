#include "platform/foundation/json_writing.h"

#include <algorithm>
#include <cmath>

#include "platform/foundation/utf8.h"

namespace tessary::foundation {
namespace {

constexpr std::string_view replacementCharacter = "\xEF\xBF\xBD";

bool needsExponent(double number) {
    const double size = std::abs(number);
    return size >= 1e21 || (size < 1e-6 && size > 0);
}

std::string controlEscape(char character) {
    constexpr std::string_view escaped = "\b\f\n\r\t";
    const auto at = escaped.find(character);
    if (at != std::string_view::npos) return {'\\', "bfnrt"[at]};
    return (character < 16 ? "\\u000" : "\\u00") + digits(int{character}, 16);
}

void appendCharacter(std::string& text, std::string_view character) {
    if (character.empty())
        text += replacementCharacter;
    else if (character == "\"" || character == "\\")
        (text += '\\') += character;
    else if (static_cast<unsigned char>(character.front()) < ' ')
        text += controlEscape(character.front());
    else
        text += character;
}

}  // namespace

JSONWriter& JSONWriter::null() { return word("null"); }

JSONWriter& JSONWriter::key(std::string_view key) {
    quoted(key);
    text_ += style_ == Style::indented ? ": " : ":";
    isAfterKey_ = true;
    return *this;
}

void JSONWriter::begin(char opening) {
    separate();
    text_ += opening;
    ++depth_;
    isFirst_ = true;
}

JSONWriter& JSONWriter::end(char closing) {
    --depth_;
    if (!isFirst_) startLine();
    text_ += closing;
    isFirst_ = false;
    return *this;
}

void JSONWriter::separate() {
    constexpr std::size_t much = 1U << 20U;  // bytes, more than most documents have
    if (sink_ && text_.size() >= much) sink_(std::exchange(text_, std::string{}));
    if (std::exchange(isAfterKey_, false)) return;
    if (!std::exchange(isFirst_, false)) text_ += ',';
    if (depth_ > 0) startLine();
}

void JSONWriter::startLine() {
    if (style_ == Style::indented) text_.append(1, '\n').append(2 * depth_, ' ');
}

JSONWriter& JSONWriter::word(std::string_view word) {
    separate();
    text_ += word;
    return *this;
}

JSONWriter& JSONWriter::number(double number) {
    if (!std::isfinite(number)) return null();
    if (needsExponent(number)) return word(digits(number, std::chars_format::scientific));
    return word(digits(number, std::chars_format::fixed));
}

JSONWriter& JSONWriter::quoted(const Bytes& bytes) {
    separate();
    text_ += '"';
    appendBase64(text_, bytes.value);
    text_ += '"';
    return *this;
}

JSONWriter& JSONWriter::quoted(std::string_view text) {
    separate();
    text_ += '"';
    while (!text.empty()) {
        const auto length = leadingCharacterLength(text);
        appendCharacter(text_, text.substr(0, length));
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
    text_ += '"';
    return *this;
}

}  // namespace tessary::foundation
