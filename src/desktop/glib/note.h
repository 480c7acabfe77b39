// What the program has to say beside its results: one line on standard error.
//
//     note("widget 1:\tno\x1B[31m")       // tessary-widgets-desktop: widget 1:→no␛[31m
#pragma once

#include <string>

namespace tessary::glib {

/// "tessary-widgets-desktop: WORDS" and a line's end, fit for a terminal whatever the words are,
/// and cut where they are thousands.
std::string noteLine(const std::string& words);

/// Writes that line.
void note(const std::string& words);

}  // namespace tessary::glib
