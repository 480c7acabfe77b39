#include "desktop/note.h"

#include <cstdio>

namespace tessary::desktop {

void note(const std::string& words) {
    const auto line = "tessary-widgets-desktop: " + words + "\n";
    std::fputs(line.c_str(), stderr);
}

}  // namespace tessary::desktop
