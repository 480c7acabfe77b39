// What a card's menu offers.
//
//     cardMenu(events, kind, small, place, monitors())
//     // Edit Widget…, Medium, Move to U2720Q, Remove Widget, a line, Add Widget…, Quit
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "desktop/windows/card.h"

namespace tessary::windows {

struct MenuItem {
    std::string label{};  ///< empty for a line between the others
    std::function<void()> chosen{};
};

/// For a card of that size at that place of one of the monitors.
std::vector<MenuItem> cardMenu(const Card::Events& events, const places::Kind& kind,
                               const places::Family& family, const places::Place& place,
                               const std::vector<places::Monitor>& monitors);

}  // namespace tessary::windows
