#include "desktop/glib/note.h"

#include <cstdio>

#include "platform/foundation/visible_text.h"

namespace tessary::glib {

namespace {

constexpr std::size_t mostCells = 4'000;

}  // namespace

std::string noteLine(const std::string& words) {
    return "tessary-widgets-desktop: " + foundation::visible(words, mostCells) + "\n";
}

void note(const std::string& words) { std::fputs(noteLine(words).c_str(), stderr); }

}  // namespace tessary::glib
