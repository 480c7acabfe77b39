// What the feed remembers of its targets, in words.
//
//     statusText(memory, nowMs)     // "prod · us-east-1: 3 firing, asked 12 s ago\n"
#pragma once

#include <cstdint>
#include <string>

#include "feed/store/store.h"

namespace tessary::feed {

std::string statusText(const store::Memory& memory, std::int64_t nowMs);
std::string statusJSON(const store::Memory& memory);

/// One target's name and state on one line: "prod · us-east-1: 3 firing".
std::string conditionOf(const rounds::KnownTarget& target);

}  // namespace tessary::feed
