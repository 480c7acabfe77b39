// What the fuzzers share: each is one function of the bytes that libFuzzer makes up.
//
// A fuzzer says with `require` what holds for all input. Where it does not, the process ends, and
// libFuzzer leaves the bytes in a file that reproduces it.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "platform/foundation/utf8.h"

namespace tessary::fuzz {

/// What a fuzzer does with one input; each defines its own.
void fuzz(std::string_view bytes);

/// Ends the process with a message unless `holds`. `shown` is what does not fit it, if anything.
void require(bool holds, std::string_view rule, std::string_view shown = {});

/// Takes choices from the front of the bytes; from none left it takes zeros.
class Choices {
public:
    explicit Choices(std::string_view bytes) : bytes_(bytes) {}

    std::uint8_t byte() {
        std::uint8_t taken = 0;
        take(&taken, sizeof taken);
        return taken;
    }
    /// Any double: infinities and no number, too.
    double number() {
        double taken = 0;
        take(&taken, sizeof taken);
        return taken;
    }
    /// One of a table, by the next byte.
    template <class Table>
    const auto& oneOf(const Table& table) {
        return table[byte() % std::size(table)];
    }
    std::string_view rest() const { return bytes_; }

private:
    void take(void* to, std::size_t size) {
        const std::size_t taken = std::min(size, bytes_.size());
        if (taken > 0) std::memcpy(to, bytes_.data(), taken);
        bytes_.remove_prefix(taken);
    }
    std::string_view bytes_;
};

/// Whether a text is well-formed UTF-8 without control characters, so that it stays on its line.
inline bool isOneLine(std::string_view text) {
    const auto isControl = [](char character) {
        return static_cast<unsigned char>(character) < 0x20 || character == 0x7F;
    };
    return foundation::isUTF8(text) && std::none_of(text.begin(), text.end(), isControl);
}

}  // namespace tessary::fuzz
