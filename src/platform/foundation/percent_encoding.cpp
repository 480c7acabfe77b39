#include "platform/foundation/percent_encoding.h"

namespace tessary::foundation {
namespace {

constexpr std::string_view unreserved =
    "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-._~";

}  // namespace

std::string percentEncoded(std::string_view text) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string encoded;
    for (const char character : text) {
        if (unreserved.find(character) != std::string_view::npos) {
            encoded += character;
            continue;
        }
        const auto byte = static_cast<unsigned char>(character);
        encoded += {'%', digits[byte / 16], digits[byte % 16]};
    }
    return encoded;
}

}  // namespace tessary::foundation
