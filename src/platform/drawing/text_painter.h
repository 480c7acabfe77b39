// A display list as plain lines, for a terminal, a status bar or a screen reader.
#pragma once

#include <string>

#include "platform/views/display_list.h"

namespace tessary::drawing {

/// The texts of a list, whole, one a line, in the order of the views; empty ones are left out, and
/// so are symbols, which only repeat what a text beside them says. Control characters and line
/// breaks become spaces, so that no text can drive a terminal, and marks that reorder a text end
/// with it, so that none reaches beyond its line. Ends without a newline.
///
///     "Alarms firing\n4\n6 watched · just now"
std::string paintText(const views::DisplayList& list);

}  // namespace tessary::drawing
