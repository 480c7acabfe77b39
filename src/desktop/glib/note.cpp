#include "desktop/glib/note.h"

#include <cstdio>

namespace tessary::glib {

void note(const std::string& words) {
    const auto line = "tessary-widgets-desktop: " + words + "\n";
    std::fputs(line.c_str(), stderr);
}

}  // namespace tessary::glib
