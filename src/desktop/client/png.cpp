#include "desktop/client/png.h"

#include <optional>

namespace tessary::client {

using foundation::Fault;
using foundation::Result;

namespace {

constexpr std::string_view signature{"\x89PNG\r\n\x1A\n"};
constexpr std::size_t headerLength = 13;

std::uint32_t number(std::string_view bytes) {
    std::uint32_t value = 0;
    for (const char byte : bytes.substr(0, 4))
        value = value << 8U | static_cast<unsigned char>(byte);
    return value;
}

/// A part of the file: its length, its kind, what it holds, and a sum of that.
struct Chunk {
    std::string_view kind{}, content{};
};

/// The first of these bytes, which then are those behind it.
std::optional<Chunk> takeChunk(std::string_view& bytes) {
    constexpr std::size_t around = 12;
    if (bytes.size() < around) return std::nullopt;
    const std::size_t length = number(bytes);
    if (length > bytes.size() - around) return std::nullopt;
    const Chunk chunk{bytes.substr(4, 4), bytes.substr(8, length)};
    bytes.remove_prefix(around + length);
    return chunk;
}

}  // namespace

std::string describe(const PixelSize& size) {
    return std::to_string(size.width) + " × " + std::to_string(size.height);
}

Result<PixelSize> pngSize(std::string_view bytes) {
    const Fault broken{"a picture that is no whole PNG"};
    if (!bytes.starts_with(signature)) return broken;
    bytes.remove_prefix(signature.size());
    const auto header = takeChunk(bytes);
    if (!header || header->kind != "IHDR" || header->content.size() != headerLength) return broken;
    const PixelSize size{number(header->content), number(header->content.substr(4))};
    if (size.width == 0 || size.height == 0) return broken;
    bool holdsPixels = false;
    for (auto chunk = takeChunk(bytes); chunk; chunk = takeChunk(bytes)) {
        holdsPixels = holdsPixels || chunk->kind == "IDAT";
        if (chunk->kind == "IEND") return holdsPixels && bytes.empty() ? Result{size} : broken;
    }
    return broken;
}

}  // namespace tessary::client
