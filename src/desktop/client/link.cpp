#include "desktop/client/link.h"

#include <algorithm>

namespace tessary::client {

bool isWidgetLink(std::string_view text) {
    constexpr std::string_view scheme = "tessary:";
    const auto lower = [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    };
    const auto isAllowed = [](char letter) {
        const auto byte = static_cast<unsigned char>(letter);
        return byte > ' ' && byte != 0x7F;
    };
    return std::ranges::equal(text.substr(0, scheme.size()), scheme, {}, lower) &&
           std::ranges::all_of(text, isAllowed);
}

}  // namespace tessary::client
