// A display list as JSON: what is drawn, where.
#pragma once

#include <string>

#include "platform/foundation/date.h"
#include "platform/views/display_list.h"

namespace tessary::drawing {

/// What a list does not know about the entry that it shows.
struct Caption {
    std::string kind{};  ///< of the widget
    views::WidgetFamily family{views::WidgetFamily::systemSmall};
    foundation::Date date{};
};

/// One object, indented, ending in a newline. Lengths are points, frames lie in the card's
/// coordinates; a colour is "#RRGGBB" beside its opacity.
std::string paintJSON(const views::DisplayList& list, const Caption& caption);

}  // namespace tessary::drawing
