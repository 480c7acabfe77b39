#include "platform/locale/localized.h"

#include <cstdint>
#include <unicode/ubidi.h>
#include <unicode/unistr.h>

namespace tessary::locale {

std::string embedded(const std::string& phrase) {
    const auto text =
        icu::UnicodeString::fromUTF8({phrase.data(), static_cast<std::int32_t>(phrase.size())});
    const bool isRightToLeft = ubidi_getBaseDirection(text.getBuffer(), text.length()) == UBIDI_RTL;
    return isRightToLeft ? "\u2068" + phrase + "\u2069" : phrase;
}

}  // namespace tessary::locale
