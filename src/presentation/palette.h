// The colours of the system: one dark scheme, all opaque.
#pragma once

#include "platform/views/color.h"

namespace tessary::presentation {

using views::Color;

struct Palette {
    static constexpr Color background = Color::rgb8(20, 21, 24);
    static constexpr Color primary = Color::rgb8(230, 232, 235);
    static constexpr Color secondary = Color::rgb8(164, 170, 180);
    static constexpr Color tertiary = Color::rgb8(124, 131, 142);
    static constexpr Color danger = Color::rgb8(242, 113, 107);
    static constexpr Color success = Color::rgb8(76, 199, 144);
    static constexpr Color warning = Color::rgb8(229, 178, 90);
    static constexpr Color divider = Color::rgb8(36, 38, 43);
    static constexpr Color accent = Color::rgb8(127, 176, 255);
};

}  // namespace tessary::presentation
