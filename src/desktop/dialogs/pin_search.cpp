#include "desktop/dialogs/pin_search.h"

#include <algorithm>
#include <sstream>

#include "desktop/glib/handles.h"

namespace tessary::dialogs {

using namespace glib;
using namespace client;

namespace {

/// Texts that differ in case or in how their letters are composed come out the same.
std::string folded(const std::string& text) {
    const Text composed{g_utf8_normalize(text.c_str(), -1, G_NORMALIZE_ALL)};
    return Text{g_utf8_casefold(composed ? composed.get() : "", -1)}.get();
}

}  // namespace

PinSearch::PinSearch(const std::vector<Pin>& pins) {
    texts_.reserve(pins.size());
    for (const auto& pin : pins) texts_.push_back(folded(pin.name + "\n" + pin.detail));
}

std::vector<std::size_t> PinSearch::matches(const std::string& words) const {
    std::istringstream in{folded(words)};
    std::vector<std::string> wanted;
    for (std::string word; in >> word;) wanted.push_back(word);
    std::vector<std::size_t> found;
    for (std::size_t i = 0; i < texts_.size(); ++i) {
        const auto isThere = [&](const std::string& word) {
            return texts_[i].find(word) != std::string::npos;
        };
        if (std::ranges::all_of(wanted, isThere)) found.push_back(i);
    }
    return found;
}

}  // namespace tessary::dialogs
