// A picture in memory.
#pragma once

#include <cstdint>
#include <vector>

namespace tessary::drawing {

/// Rows from the top, pixels from the left: 0xAARRGGBB, the colours multiplied by the alpha.
struct Pixels {
    int width{};
    int height{};
    double scale{1};  ///< pixels per point
    std::vector<std::uint32_t> values{};
    bool operator==(const Pixels&) const = default;
};

}  // namespace tessary::drawing
