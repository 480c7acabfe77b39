#include "desktop/client/link.h"

#include <algorithm>

#include "platform/foundation/letters.h"

namespace tessary::client {

bool isWidgetLink(std::string_view text) {
    constexpr std::string_view scheme = "tessary:";
    const auto isAllowed = [](char letter) {
        const auto byte = static_cast<unsigned char>(letter);
        return byte > ' ' && byte != 0x7F;
    };
    return foundation::inSmallLetters(text.substr(0, scheme.size())) == scheme &&
           std::ranges::all_of(text, isAllowed);
}

}  // namespace tessary::client
