#include "platform/locale/text_equality.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <unicode/normlzr.h>
#include <unicode/unistr.h>

#include "platform/foundation/utf8.h"

namespace tessary::locale {
namespace {

/// ICU counts in 32 bits, and decomposing lengthens a text.
constexpr std::size_t longestComparable = 512U << 20U;

bool isASCII(std::string_view text) {
    return std::ranges::all_of(text,
                               [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
}

bool isComparable(std::string_view text) {
    return text.size() <= longestComparable && foundation::isUTF8(text);
}

icu::UnicodeString unicode(std::string_view text) {
    return icu::UnicodeString::fromUTF8({text.data(), static_cast<std::int32_t>(text.size())});
}

}  // namespace

bool canonicallyEqual(std::string_view a, std::string_view b) {
    if (a == b) return true;
    // Some characters decompose into an ASCII one alone (U+037E is a semicolon), so that only two
    // ASCII texts are settled by their bytes.
    if (isASCII(a) && isASCII(b)) return false;
    if (!isComparable(a) || !isComparable(b)) return false;
    UErrorCode status = U_ZERO_ERROR;
    const auto order = icu::Normalizer::compare(unicode(a), unicode(b), 0, status);
    return U_SUCCESS(status) && order == 0;
}

std::string canonicalForm(std::string_view text) {
    if (isASCII(text) || !isComparable(text)) return std::string{text};
    icu::UnicodeString decomposed;
    UErrorCode status = U_ZERO_ERROR;
    icu::Normalizer::normalize(unicode(text), UNORM_NFD, 0, decomposed, status);
    std::string form;
    if (U_SUCCESS(status)) decomposed.toUTF8String(form);
    return U_SUCCESS(status) ? form : std::string{text};
}

}  // namespace tessary::locale
