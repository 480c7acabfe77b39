#include "feed/notes.h"

#include <cstdio>
#include <utility>

#include "feed/status.h"
#include "platform/system/output.h"

namespace tessary::feed {

using foundation::Fault;

void complain(const std::string& line) {
    std::fprintf(stderr, "tessary-widgets-feed: %s\n", line.c_str());
}

int complained(const Fault& fault, Status status) {
    complain(fault.message());
    return status;
}

int printed(const std::string& text) {
    const auto result = system::writeStandardOutput(text);
    return result ? done : complained(result.fault(), failed);
}

void Notes::tellTargets(const store::Memory& memory) {
    for (const rounds::KnownTarget& target : memory.targets) {
        const char* const state = target.authExpired ? "paused" : target.fault ? "failed" : "";
        tell(target.profile + '\0' + target.region, state, conditionOf(target));
    }
}

void Notes::tellFault(const std::string& matter, const std::string& fault) {
    tell(matter, fault, fault);
}

void Notes::tell(const std::string& matter, const std::string& state, const std::string& line) {
    if (std::exchange(states_[matter], state) != state && !line.empty()) complain(line);
}

}  // namespace tessary::feed
