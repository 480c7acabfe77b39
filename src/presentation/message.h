// A message that takes a whole widget: there is nothing normal to show.
#pragma once

#include <string>

#include "platform/views/view.h"

namespace tessary::presentation {

/// A widget's name line.
views::View heading(std::string text);

/// Heading at the top; symbol, title and explanation (up to three lines) at the bottom. All texts
/// are shown verbatim.
struct Message {
    std::string heading{};
    std::string symbol{};  ///< the name of a symbol
    std::string title{};
    std::string detail{};
    double symbolSize{20};  ///< points

    views::View body() const;
    bool operator==(const Message&) const = default;
};

}  // namespace tessary::presentation
