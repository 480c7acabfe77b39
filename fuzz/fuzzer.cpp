#include "fuzzer.h"

#include <cstdio>
#include <cstdlib>

namespace tessary::fuzz {

void require(bool holds, std::string_view rule, std::string_view shown) {
    if (holds) return;
    std::fprintf(stderr, "BROKEN RULE: %.*s\n", static_cast<int>(rule.size()), rule.data());
    if (!shown.empty())
        std::fprintf(stderr, "shown by: %.*s\n", static_cast<int>(shown.size()), shown.data());
    std::abort();
}

}  // namespace tessary::fuzz

// libFuzzer's own name for the function that it calls.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    tessary::fuzz::fuzz({reinterpret_cast<const char*>(bytes), size});
    return 0;
}
