#include <array>
#include <cerrno>
#include <cstdint>
#include <fcntl.h>
#include <memory>
#include <sched.h>
#include <seccomp.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <system_error>
#include <unistd.h>

#include "platform/sandbox/doors.h"

namespace tessary::sandbox {

namespace {

struct ReleaseFilter {
    void operator()(void* filter) const { seccomp_release(filter); }
};
using Filter = std::unique_ptr<void, ReleaseFilter>;

constexpr std::array plainCalls{
    // reading what is open, or may be opened; writing to what is open
    SCMP_SYS(read), SCMP_SYS(pread64), SCMP_SYS(readv), SCMP_SYS(write), SCMP_SYS(writev),
    SCMP_SYS(close), SCMP_SYS(lseek), SCMP_SYS(fcntl), SCMP_SYS(fadvise64), SCMP_SYS(poll),
    SCMP_SYS(ppoll), SCMP_SYS(recvmsg), SCMP_SYS(sendmsg),
    // looking at files and folders
    SCMP_SYS(stat), SCMP_SYS(lstat), SCMP_SYS(fstat), SCMP_SYS(newfstatat), SCMP_SYS(statx),
    SCMP_SYS(statfs), SCMP_SYS(fstatfs), SCMP_SYS(access), SCMP_SYS(faccessat),
    SCMP_SYS(faccessat2), SCMP_SYS(readlink), SCMP_SYS(readlinkat), SCMP_SYS(getdents64),
    SCMP_SYS(getcwd),
    // memory
    SCMP_SYS(brk), SCMP_SYS(munmap), SCMP_SYS(mremap), SCMP_SYS(madvise),
    // threads
    SCMP_SYS(futex), SCMP_SYS(set_robust_list), SCMP_SYS(rseq), SCMP_SYS(gettid),
    SCMP_SYS(sched_yield), SCMP_SYS(sched_getaffinity), SCMP_SYS(sched_getattr),
    SCMP_SYS(sched_getparam), SCMP_SYS(sched_getscheduler), SCMP_SYS(getcpu), SCMP_SYS(membarrier),
    SCMP_SYS(exit),
    // time, chance and who one is
    SCMP_SYS(clock_gettime), SCMP_SYS(clock_getres), SCMP_SYS(clock_nanosleep), SCMP_SYS(nanosleep),
    SCMP_SYS(gettimeofday), SCMP_SYS(time), SCMP_SYS(getrandom), SCMP_SYS(getpid), SCMP_SYS(getuid),
    SCMP_SYS(geteuid), SCMP_SYS(getgid), SCMP_SYS(getegid), SCMP_SYS(uname), SCMP_SYS(sysinfo),
    // its own signals and its end
    SCMP_SYS(rt_sigaction), SCMP_SYS(rt_sigprocmask), SCMP_SYS(rt_sigreturn), SCMP_SYS(sigaltstack),
    SCMP_SYS(restart_syscall), SCMP_SYS(exit_group)};

/// Allowed where an argument, of which only the bits of `mask` count, has a certain value.
struct CallWith {
    int call{};
    unsigned argument{};
    std::uint64_t mask{};
    std::uint64_t value{};
};

constexpr std::uint64_t everyBit = ~std::uint64_t{0};

std::array<CallWith, 8> callsWith() {
    constexpr std::uint64_t changing = O_ACCMODE | O_CREAT | O_TRUNC;
    const auto self = static_cast<std::uint64_t>(::getpid());
    return {{{SCMP_SYS(open), 1, changing, O_RDONLY},
             {SCMP_SYS(openat), 2, changing, O_RDONLY},
             {SCMP_SYS(mmap), 2, PROT_EXEC, 0},
             {SCMP_SYS(mprotect), 2, PROT_EXEC, 0},
             {SCMP_SYS(clone), 0, CLONE_THREAD, CLONE_THREAD},
             {SCMP_SYS(tgkill), 0, everyBit, self},
             {SCMP_SYS(prctl), 0, everyBit, PR_SET_NAME},
             {SCMP_SYS(prlimit64), 2, everyBit, 0}}};  // reads a limit, sets none
}

bool addRules(void* filter) {
    // A call of another architecture would mean another one of the same number.
    seccomp_attr_set(filter, SCMP_FLTATR_ACT_BADARCH, SCMP_ACT_KILL_PROCESS);
    bool added = true;
    for (const int call : plainCalls)
        added &= seccomp_rule_add(filter, SCMP_ACT_ALLOW, call, 0) == 0;
    for (const CallWith& rule : callsWith()) {
        const scmp_arg_cmp comparison{rule.argument, SCMP_CMP_MASKED_EQ, rule.mask, rule.value};
        added &= seccomp_rule_add_array(filter, SCMP_ACT_ALLOW, rule.call, 1, &comparison) == 0;
    }
#ifdef __SANITIZE_ADDRESS__
    // The sanitizers find out by a pipe of their own whether memory can be read.
    for (const int call : {SCMP_SYS(pipe), SCMP_SYS(pipe2)})
        added &= seccomp_rule_add(filter, SCMP_ACT_ALLOW, call, 0) == 0;
#endif
    // Its flags lie in memory, where no filter sees them: the C library then takes clone.
    added &= seccomp_rule_add(filter, SCMP_ACT_ERRNO(ENOSYS), SCMP_SYS(clone3), 0) == 0;
    return added;
}

}  // namespace

Refusal restrictSystemCalls() {
    const Filter filter{seccomp_init(SCMP_ACT_ERRNO(EPERM))};
    if (!filter) return "out of memory";
    if (!addRules(filter.get())) return "the list of system calls was not accepted";
    const int error = seccomp_load(filter.get());
    if (error != 0) return std::system_category().message(-error);
    return std::nullopt;
}

}  // namespace tessary::sandbox
