// How a path is painted.
#pragma once

#include <variant>
#include <vector>

#include "platform/foundation/named_cases.h"
#include "platform/views/color.h"

namespace tessary::views {

enum class LineCap { butt, round };
enum class LineJoin { miter, round };

/// A line along a path; lengths in points.
struct Stroke {
    Color color{};
    double width{1};
    LineCap cap{LineCap::butt};
    LineJoin join{LineJoin::miter};
    double miterLimit{10};
    std::vector<double> dash{};  ///< lengths drawn and left free in turn; empty: a whole line
    double dashPhase{};
    bool operator==(const Stroke&) const = default;
};

/// The inside of a path (non-zero winding), filled with evenly spaced colours from the top edge of
/// its frame to the bottom edge. One colour fills plainly.
struct Fill {
    std::vector<Color> gradient{};
    bool operator==(const Fill&) const = default;
};

using Paint = std::variant<Stroke, Fill>;

}  // namespace tessary::views

template <>
inline constexpr auto tessary::foundation::namesOf<tessary::views::LineCap> =
    tessary::foundation::NamedCases<tessary::views::LineCap, 2>{{
        {tessary::views::LineCap::butt, "butt"},
        {tessary::views::LineCap::round, "round"},
    }};

template <>
inline constexpr auto tessary::foundation::namesOf<tessary::views::LineJoin> =
    tessary::foundation::NamedCases<tessary::views::LineJoin, 2>{{
        {tessary::views::LineJoin::miter, "miter"},
        {tessary::views::LineJoin::round, "round"},
    }};
