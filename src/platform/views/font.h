// The system font: sizes, weights and designs, and the metrics that decide every height.
#pragma once

#include "platform/foundation/named_cases.h"

namespace tessary::views {

enum class Weight { regular, medium, semibold };
enum class FontDesign { standard, rounded };

/// A font of the system at a size in points. Equal when all four members are.
///
///     Font::system(44, Weight::semibold, FontDesign::rounded)
struct Font {
    double size{13};
    Weight weight{Weight::regular};
    FontDesign design{FontDesign::standard};
    bool monospacedDigits{false};

    static constexpr Font system(double size, Weight weight = Weight::regular,
                                 FontDesign design = FontDesign::standard) {
        return {size, weight, design, false};
    }

    /// Distances for a line of this font, in points. They belong to the system font, the same for
    /// every weight and design; whatever typeface stands in for it, layout goes by these.
    constexpr double ascent() const { return 0.952148 * size; }
    constexpr double lineHeight() const { return 1.193359 * size; }
    constexpr double capHeight() const { return 0.704590 * size; }

    bool operator==(const Font&) const = default;
};

}  // namespace tessary::views

template <>
inline constexpr auto tessary::foundation::namesOf<tessary::views::Weight> =
    tessary::foundation::NamedCases<tessary::views::Weight, 3>{{
        {tessary::views::Weight::regular, "regular"},
        {tessary::views::Weight::medium, "medium"},
        {tessary::views::Weight::semibold, "semibold"},
    }};

template <>
inline constexpr auto tessary::foundation::namesOf<tessary::views::FontDesign> =
    tessary::foundation::NamedCases<tessary::views::FontDesign, 2>{{
        {tessary::views::FontDesign::standard, "default"},
        {tessary::views::FontDesign::rounded, "rounded"},
    }};
