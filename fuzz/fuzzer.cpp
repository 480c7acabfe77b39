#include "fuzzer.h"

#include <cstdio>
#include <cstdlib>

#include "platform/foundation/utf8.h"

namespace tessary::fuzz {

void require(bool holds, std::string_view rule, std::string_view shown) {
    if (holds) return;
    std::fprintf(stderr, "BROKEN RULE: %.*s\n", static_cast<int>(rule.size()), rule.data());
    if (!shown.empty())
        std::fprintf(stderr, "shown by: %.*s\n", static_cast<int>(shown.size()), shown.data());
    std::abort();
}

bool isOneLine(std::string_view text) {
    const auto isControl = [](char character) {
        return static_cast<unsigned char>(character) < 0x20 || character == 0x7F;
    };
    return foundation::isUTF8(text) && std::none_of(text.begin(), text.end(), isControl);
}

}  // namespace tessary::fuzz

// libFuzzer's own name for the function that it calls.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    tessary::fuzz::fuzz({reinterpret_cast<const char*>(bytes), size});
    return 0;
}
