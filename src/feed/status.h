// What the feed remembers of its targets and pins, in words.
//
//     statusText(memory, around, nowMs)      // "prod · us-east-1: 3 firing (answered 12 s ago)\n"
#pragma once

#include <cstdint>
#include <string>

#include "feed/store/store.h"
#include "feed/watched.h"

namespace tessary::feed {

/// A line each, and below one that is in trouble what to type.
std::string statusText(const store::Memory& memory, const Surroundings& around, std::int64_t nowMs);
std::string statusJSON(const store::Memory& memory, const Surroundings& around);
/// All of it in a few words: "3 firing in 2 targets, 1 failed".
std::string summaryOf(const store::Memory& memory);

/// One target's name and state on one line: "prod · us-east-1: 3 firing".
std::string conditionOf(const rounds::KnownTarget& target);

}  // namespace tessary::feed
