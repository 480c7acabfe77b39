// A kernel that lacks something.
#pragma once

#include <cerrno>
#include <cstddef>
#include <iterator>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <optional>
#include <sys/prctl.h>
#include <unistd.h>

namespace tessary {

/// Makes a system call of this process, and of those that it becomes, look unknown to the kernel;
/// or only where its second argument is this command.
inline void forbid(unsigned call, std::optional<unsigned> command = {}) {
    const unsigned asked = command.value_or(0);
    sock_filter filter[] = {
        {BPF_LD | BPF_W | BPF_ABS, 0, 0, offsetof(seccomp_data, nr)},
        {BPF_JMP | BPF_JEQ | BPF_K, 0, 3, call},
        {BPF_LD | BPF_W | BPF_ABS, 0, 0, offsetof(seccomp_data, args[1])},
        {BPF_JMP | BPF_JEQ | BPF_K, 0, static_cast<unsigned char>(command ? 1 : 0), asked},
        {BPF_RET | BPF_K, 0, 0, SECCOMP_RET_ERRNO | ENOSYS},
        {BPF_RET | BPF_K, 0, 0, SECCOMP_RET_ALLOW},
    };
    const sock_fprog program{std::size(filter), filter};
    ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
    if (::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) != 0) ::_exit(99);
}

}  // namespace tessary
