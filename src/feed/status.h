// What the feed remembers of its targets, in words.
//
//     statusText(memory, nowMs)     // "prod · us-east-1: 3 firing, asked 12 s ago\n"
#pragma once

#include <cstdint>
#include <string>

#include "feed/store/store.h"

namespace tessary::feed {

std::string statusText(const store::Memory& memory, std::int64_t nowMs);
/// All of it in a few words: "3 firing in 2 targets, 1 failed".
std::string summaryOf(const store::Memory& memory);
std::string statusJSON(const store::Memory& memory);

/// One target's name and state on one line: "prod · us-east-1: 3 firing".
std::string conditionOf(const rounds::KnownTarget& target);

}  // namespace tessary::feed
