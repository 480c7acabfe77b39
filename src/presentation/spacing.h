// Distances that mean the same wherever they stand, in points.
#pragma once

namespace tessary::presentation {

struct Spacing {
    static constexpr double columns = 14;     ///< between the parts of the medium size
    static constexpr double rows = 4;         ///< between what stands below one another in a pin
    static constexpr double caption = 6;      ///< between a chart and what stands below it
    static constexpr double number = 4;       ///< at least, above and below a large number
    static constexpr double pinColumn = 128;  ///< a pin's facts beside its chart, their width
};

}  // namespace tessary::presentation
