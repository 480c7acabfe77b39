// A message that takes a whole widget: there is nothing normal to show.
#pragma once

#include <string>

#include "platform/views/view.h"

namespace tessary::presentation {

/// Heading at the top; symbol, title and explanation (up to three lines) at the bottom. All texts
/// are shown verbatim.
struct PinMessage {
    std::string heading{};  ///< the widget's name line
    std::string symbol{};   ///< the name of a symbol
    std::string title{};
    std::string detail{};

    views::View body() const;
    bool operator==(const PinMessage&) const = default;
};

}  // namespace tessary::presentation
