// What the program has to say beside its results: one line on standard error.
#pragma once

#include <string>

namespace tessary::glib {

/// Writes "tessary-widgets-desktop: WORDS" and a line's end.
void note(const std::string& words);

}  // namespace tessary::glib
