// Colours: sRGB components and an opacity, each from 0 to 1.
#pragma once

#include <cmath>
#include <cstdint>
#include <string>

#include "platform/foundation/numbers.h"

namespace tessary::views {

/// An sRGB colour. Equal when all four components are.
///
///     Color::rgb8(242, 113, 107).hex()               // "#F2716B"
///     Color::rgb8(242, 113, 107).withOpacity(0.8)    // the same, 80 % opaque
struct Color {
    double red{};
    double green{};
    double blue{};
    double opacity{1};

    /// From 8-bit components: each becomes an exact fraction of 255.
    static constexpr Color rgb8(std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
        return {red / 255.0, green / 255.0, blue / 255.0, 1};
    }

    /// The same colour, its opacity multiplied by `factor`.
    constexpr Color withOpacity(double factor) const {
        return {red, green, blue, opacity * factor};
    }

    /// "#RRGGBB", each component rounded to 8 bits; the opacity is not part of it.
    std::string hex() const {
        std::string text = "#";
        for (const double component : {red, green, blue})
            text += foundation::hexadecimal(static_cast<char>(std::lround(component * 255)));
        return text;
    }
    bool operator==(const Color&) const = default;
};

}  // namespace tessary::views
