// Running a function of a test in a process of its own, which gives up things for good.
#pragma once

#include <cerrno>
#include <cstdlib>
#include <functional>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

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
    std::string said;
    char room[4096];
    ssize_t count = 0;
    while ((count = ::read(ends[0], room, sizeof room)) > 0)
        said.append(room, static_cast<std::size_t>(count));
    ::close(ends[0]);
    int status = 0;
    ::waitpid(child, &status, 0);
    return status == 0 ? said : "ended with status " + std::to_string(status);
}

}  // namespace tessary::sandbox
