// One line at the foot of a pin widget that says why its data is not current.
#pragma once

#include <optional>
#include <string>

#include "platform/foundation/date.h"
#include "platform/views/view.h"

namespace tessary::presentation {

/// The first that holds of: sign-in expired, an error (even an empty one); else it is stale.
struct PinProblem {
    std::string profile{};
    std::optional<std::string> error{};
    bool authExpired{};
    foundation::Date updated{};  ///< when the data was last brought up to date

    views::View body(const views::Environment& environment) const;
    bool operator==(const PinProblem&) const = default;

private:
    views::View notice(const views::Environment& environment) const;
};

}  // namespace tessary::presentation
