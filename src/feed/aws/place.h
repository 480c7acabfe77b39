// Where something is asked: one account's part of one region.
//
//     Place{"prod", "us-east-1"}
#pragma once

#include <string>

namespace tessary::aws {

struct Place {
    std::string profile{};
    std::string region{};
    bool operator==(const Place&) const = default;
};

}  // namespace tessary::aws
