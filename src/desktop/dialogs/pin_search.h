// Finds pins by words of what one sees of them, whatever their case, in any order.
//
//     PinSearch{{{"a", "orders-db CPU", "Average · prod"}}}.matches("prod orders")     // {0}
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "desktop/client/messages.h"

namespace tessary::dialogs {

class PinSearch {
public:
    explicit PinSearch(const std::vector<client::Pin>& pins);

    /// The places, in order, of the pins whose name and detail have all these words in them; every
    /// pin has those of an empty text.
    std::vector<std::size_t> matches(const std::string& words) const;

private:
    std::vector<std::string> texts_{};  ///< of each pin, as folded for comparing
};

}  // namespace tessary::dialogs
