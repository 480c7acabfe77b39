#include "platform/foundation/percent_encoding.h"

#include "platform/foundation/numbers.h"

namespace tessary::foundation {
namespace {

constexpr std::string_view unreserved =
    "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-._~";

}  // namespace

std::string percentEncoded(std::string_view text) {
    std::string encoded;
    for (const char character : text) {
        if (unreserved.find(character) != std::string_view::npos) {
            encoded += character;
            continue;
        }
        encoded += '%' + hexadecimal(character);
    }
    return encoded;
}

}  // namespace tessary::foundation
