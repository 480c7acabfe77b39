// Texts of unknown origin made fit for a terminal: nothing in them is obeyed, all of it is seen.
//
//     visible("a\tb\x1B[31m")                 // "a→b␛[31m"
//     visible("orders-db-cpu-high", 9)        // "orders-d…"
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tessary::foundation {

/// One character as a terminal shows it.
struct VisibleCharacter {
    std::string shown{};   ///< itself, or one that stands for it
    int cells{};           ///< how many columns `shown` takes: 0 to 2
    std::size_t length{};  ///< bytes of the text that it was; 1 for a byte that is not UTF-8
};

/// The first character of a text that is not empty. Tabs, controls, bytes that are not UTF-8, and
/// what has no look of its own or turns its neighbours around come as a character of one cell.
VisibleCharacter firstVisible(std::string_view text);

/// The whole text on one line, cut off with an ellipsis where it would take more than `most` cells.
std::string visible(std::string_view text, std::size_t most = 200);

}  // namespace tessary::foundation
