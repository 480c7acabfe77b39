// What holds for every display list, whatever it shows.
#pragma once

#include "platform/views/display_list.h"

namespace tessary::fuzz {

/// Every element lies on the card with its edges on pixels, every number is one that can be drawn,
/// texts are UTF-8 and keep to their line limits, the link is a URI.
void checkDisplayList(const views::DisplayList& list);

}  // namespace tessary::fuzz
