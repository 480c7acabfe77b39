// What a picture's file says of itself before a pixel of it is decoded.
//
//     pngSize(bytes).value()               // {344, 164}
//     pngSize("\x89PNG\r\n\x1A\n")      // Fault{"a picture that is no whole PNG"}
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/foundation/result.h"

namespace tessary::client {

struct PixelSize {
    std::int64_t width{}, height{};
    bool operator==(const PixelSize&) const = default;
};

/// "344 × 164"
std::string describe(const PixelSize& size);

/// How many pixels a PNG has. A fault where the file's parts do not follow one another from its
/// header to its end; what they hold is not looked at.
foundation::Result<PixelSize> pngSize(std::string_view bytes);

}  // namespace tessary::client
