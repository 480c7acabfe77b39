// Texts in a row.
//
//     joined(std::vector{"a", "b"}, ", ")                    // "a, b"
//     joined(kinds, ", ", &Kind::name)                       // "alarms, alarm, metric"
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>

namespace tessary::foundation {

/// What `text` makes of each, with `between` in between.
template <class Range, class Text = std::identity>
std::string joined(const Range& range, std::string_view between, Text text = {}) {
    std::string row;
    bool isFirst = true;
    for (const auto& each : range)
        (row += std::exchange(isFirst, false) ? "" : between) += std::invoke(text, each);
    return row;
}

}  // namespace tessary::foundation
