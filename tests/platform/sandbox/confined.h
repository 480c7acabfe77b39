// Running a function of a test in a process of its own, which gives up things for good.
#pragma once

#include <cerrno>
#include <cstdlib>
#include <functional>
#include <sys/wait.h>
#include <unistd.h>

#include "support/fixtures.h"

namespace tessary::sandbox {

/// What `inside` returns, run in a child process; what the child's end was when it did not end
/// well.
inline std::string confined(const std::function<std::string()>& inside) {
    int ends[2] = {-1, -1};
    if (::pipe(ends) != 0) std::abort();
    const pid_t child = ::fork();
    if (child == 0) {
        const std::string said = inside();
        const bool told = ::write(ends[1], said.data(), said.size()) >= 0;
        ::_exit(told ? 0 : 1);  // without the sanitizers' closing checks, which need what is shut
    }
    ::close(ends[1]);
    const std::string said = contents("/dev/fd/" + std::to_string(ends[0]));
    ::close(ends[0]);
    int status = 0;
    ::waitpid(child, &status, 0);
    return status == 0 ? said : "ended with status " + std::to_string(status);
}

}  // namespace tessary::sandbox
