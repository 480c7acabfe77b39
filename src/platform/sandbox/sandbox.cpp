#include "platform/sandbox/sandbox.h"

#include <cerrno>
#include <sys/prctl.h>
#include <system_error>

#include "platform/sandbox/doors.h"

namespace tessary::sandbox {

namespace {

Refusal giveUpNewPrivileges() {
    if (::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0) return std::nullopt;
    return std::system_category().message(errno);
}

}  // namespace

std::vector<std::string> enterSandbox(const SandboxRules& rules) {
    std::vector<std::string> open;
    const auto note = [&](const std::string& means, const Refusal& refusal) {
        if (refusal) open.push_back("no " + means + ": " + *refusal);
    };
    // The system calls last: they are what the other two are put in force by.
    note("end of new privileges", giveUpNewPrivileges());
    note("Landlock", restrictPaths(rules.readable));
    note("seccomp", restrictSystemCalls(rules.readable ? Reader::ofNoOther : Reader::ofAnyFile));
    return open;
}

}  // namespace tessary::sandbox
