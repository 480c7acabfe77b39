#include "platform/views/proposal.h"

#include <array>
#include <charconv>

namespace tessary::views {

std::string Offer::description() const {
    if (isUnspecified()) return "unspecified";
    if (isUnbounded()) return "unbounded";
    std::array<char, 32> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), length_).ptr;
    return {buffer.data(), end};
}

std::string Proposal::description() const {
    return width.description() + " x " + height.description();
}

}  // namespace tessary::views
