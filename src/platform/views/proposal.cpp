#include "platform/views/proposal.h"

#include "platform/foundation/numbers.h"

namespace tessary::views {

std::string Offer::description() const {
    if (isUnspecified()) return "unspecified";
    if (isUnbounded()) return "unbounded";
    return foundation::digits(length_);
}

std::string Proposal::description() const {
    return width.description() + " x " + height.description();
}

}  // namespace tessary::views
