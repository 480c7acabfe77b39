#include "platform/drawing/png_encoder.h"

#include <cmath>
#include <libdeflate.h>
#include <string_view>

#include "platform/drawing/flat_deflate.h"

namespace tessary::drawing {

namespace {

constexpr double pointsPerMetre = 72 / 0.0254;

void appendNumber(std::string& bytes, std::uint32_t value) {
    for (const unsigned shift : {24U, 16U, 8U, 0U})
        bytes += static_cast<char>(value >> shift & 0xFFU);
}

void appendChunk(std::string& file, std::string_view type, std::string_view data) {
    appendNumber(file, static_cast<std::uint32_t>(data.size()));
    const std::size_t start = file.size();
    file.append(type).append(data);
    appendNumber(file, libdeflate_crc32(0, file.data() + start, file.size() - start));
}

}  // namespace

std::string encodePNG(const Pixels& pixels) {
    std::string header;
    appendNumber(header, static_cast<std::uint32_t>(pixels.width));
    appendNumber(header, static_cast<std::uint32_t>(pixels.height));
    // Bits, RGBA, deflate, no filter methods but the standard's, whole.
    header.append({8, 6, 0, 0, 0});

    std::string density;
    for (int axis = 0; axis < 2; ++axis)
        appendNumber(density,
                     static_cast<std::uint32_t>(std::lround(pixels.scale * pointsPerMetre)));
    density += '\1';  // per metre

    std::string file = "\x89PNG\r\n\x1A\n";
    appendChunk(file, "IHDR", header);
    appendChunk(file, "sRGB", std::string_view{"\0", 1});
    appendChunk(file, "pHYs", density);
    appendChunk(file, "IDAT", compressedRows(pixels));
    appendChunk(file, "IEND", {});
    return file;
}

}  // namespace tessary::drawing
