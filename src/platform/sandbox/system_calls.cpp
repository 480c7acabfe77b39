#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <memory>
#include <seccomp.h>
#include <string_view>
#include <sys/mman.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <system_error>
#include <unistd.h>
#include <vector>

#include "platform/sandbox/doors.h"
#include "platform/system/files.h"

namespace tessary::sandbox {

namespace {

struct ReleaseFilter {
    void operator()(void* filter) const { seccomp_release(filter); }
};
using Filter = std::unique_ptr<void, ReleaseFilter>;

/// An argument of a call of which only the bits of `mask` count, and what those have to be.
struct Condition {
    unsigned argument{};
    std::uint64_t mask{};
    std::uint64_t value{};
    std::string_view words{};
};

constexpr std::uint64_t everyBit = ~std::uint64_t{0};
constexpr std::uint64_t everyFlag = 0xFFFF'FFFF;  // an int: what stands above it is never looked at

/// What an allowed call is needed for, and by whom.
enum class Use { streams, fonts, memory, clock, self, files };

/// A call, allowed where all its conditions hold; the same call may stand in several lines.
struct Call {
    Use use{};
    int number{};
    std::vector<Condition> conditions{};
};

std::vector<Call> callsForFiles() {
    constexpr std::uint64_t harmlessWhenOpening = O_CLOEXEC | O_NOCTTY | O_NONBLOCK;
    const Condition readOnly{1, everyFlag & ~harmlessWhenOpening, O_RDONLY,
                             "no flags but O_CLOEXEC, O_NOCTTY, O_NONBLOCK"};
    const Condition readOnlyAt{2, readOnly.mask, readOnly.value, readOnly.words};
    constexpr Condition notExecutable{2, PROT_EXEC, 0, "without PROT_EXEC"};
    return {
        {Use::streams, SCMP_SYS(read)},
        {Use::streams, SCMP_SYS(write)},
        {Use::streams, SCMP_SYS(writev)},
        {Use::streams, SCMP_SYS(poll)},
        {Use::streams, SCMP_SYS(ppoll)},
        {Use::streams,
         SCMP_SYS(sendto),
         {{3, everyFlag, MSG_NOSIGNAL, "flags MSG_NOSIGNAL"}, {4, everyBit, 0, "no address"}}},
        {Use::streams, SCMP_SYS(lseek)},
        {Use::streams, SCMP_SYS(close)},

        {Use::fonts, SCMP_SYS(open), {readOnly}},
        {Use::fonts, SCMP_SYS(openat), {readOnlyAt}},
        {Use::fonts, SCMP_SYS(fstat)},
        {Use::fonts,
         SCMP_SYS(fcntl),
         {{1, everyFlag, F_SETFD, "command F_SETFD"}, {2, everyBit, FD_CLOEXEC, "FD_CLOEXEC"}}},

        {Use::memory, SCMP_SYS(brk)},
        {Use::memory, SCMP_SYS(mmap), {notExecutable}},
        {Use::memory, SCMP_SYS(mprotect), {notExecutable}},
        {Use::memory, SCMP_SYS(mremap)},
        {Use::memory, SCMP_SYS(munmap)},
        {Use::memory, SCMP_SYS(madvise), {{2, everyFlag, MADV_DONTNEED, "advice MADV_DONTNEED"}}},
    };
}

std::vector<Call> callsForItself() {
    const auto self = static_cast<std::uint64_t>(::getpid());
    return {
        {Use::clock,
         SCMP_SYS(clock_gettime),
         {{0, 0x8000'0000, 0, "a clock of the system's or its own"}}},  // else of the process -N
        {Use::clock, SCMP_SYS(gettimeofday)},
        {Use::clock, SCMP_SYS(time)},
        {Use::clock, SCMP_SYS(getrandom)},
        {Use::clock, SCMP_SYS(sysinfo)},

        {Use::self, SCMP_SYS(futex)},
        {Use::self, SCMP_SYS(sched_yield)},
        {Use::self, SCMP_SYS(getpid)},
        {Use::self, SCMP_SYS(gettid)},
        {Use::self,
         SCMP_SYS(prlimit64),
         {{0, everyFlag, 0, "process 0, itself"}, {2, everyBit, 0, "no new limit"}}},
        {Use::self, SCMP_SYS(tgkill), {{0, everyFlag, self, "its own process"}}},
        {Use::self, SCMP_SYS(rt_sigaction)},
        {Use::self, SCMP_SYS(rt_sigprocmask)},
        {Use::self, SCMP_SYS(rt_sigreturn)},
        {Use::self, SCMP_SYS(sigaltstack)},
        {Use::self, SCMP_SYS(restart_syscall)},
        {Use::self, SCMP_SYS(exit)},
        {Use::self, SCMP_SYS(exit_group)},
    };
}

std::vector<Call> callsOfTheBroker() {
    return {
        {Use::files, SCMP_SYS(stat)},
        {Use::files, SCMP_SYS(newfstatat)},
        {Use::files, SCMP_SYS(fcntl), {{1, everyFlag, F_SETLEASE, "command F_SETLEASE"}}},
        {Use::files,
         SCMP_SYS(fcntl),
         {{1, everyFlag, F_SETSIG, "command F_SETSIG"}, {2, everyBit, SIGURG, "SIGURG"}}},
        {Use::files, SCMP_SYS(clock_nanosleep)},
    };
}

std::vector<Call> allowedCalls() {
    std::vector<Call> all;
    for (const auto& calls : {callsForFiles(), callsForItself(), callsOfTheBroker()})
        all.insert(all.end(), calls.begin(), calls.end());
    return all;
}

std::string_view words(Use use) {
    switch (use) {
        case Use::streams: return "requests, replies, the broker";
        case Use::fonts: return "fonts";
        case Use::memory: return "memory";
        case Use::clock: return "time and chance";
        case Use::self: return "itself";
        case Use::files: return "files, for the broker alone";
    }
    return "";
}

bool add(void* filter, const Call& call) {
    std::vector<scmp_arg_cmp> comparisons;
    for (const Condition& condition : call.conditions)
        comparisons.push_back(
            {condition.argument, SCMP_CMP_MASKED_EQ, condition.mask, condition.value});
    return seccomp_rule_add_array(filter, SCMP_ACT_ALLOW, call.number,
                                  static_cast<unsigned>(comparisons.size()),
                                  comparisons.data()) == 0;
}

bool addRules(void* filter, Reader reader) {
    // A call of another architecture would mean another one of the same number.
    seccomp_attr_set(filter, SCMP_FLTATR_ACT_BADARCH, SCMP_ACT_KILL_PROCESS);
    bool added = true;
    for (const Call& call : allowedCalls())
        if (call.use != Use::files || reader == Reader::ofAnyFile) added &= add(filter, call);
#ifdef __SANITIZE_ADDRESS__
    // The sanitizers find out by a pipe of their own whether memory can be read.
    for (const int call : {SCMP_SYS(pipe), SCMP_SYS(pipe2)}) added &= add(filter, {{}, call});
#endif
    return added;
}

/// "`fcntl` (command F_SETFD, FD_CLOEXEC)".
std::string described(const Call& call) {
    const std::unique_ptr<char, decltype(&std::free)> name{
        seccomp_syscall_resolve_num_arch(SCMP_ARCH_NATIVE, call.number), &std::free};
    std::string text = std::string{"`"} + name.get() + '`';
    for (const Condition& condition : call.conditions)
        text.append(&condition == call.conditions.data() ? " (" : ", ").append(condition.words);
    return call.conditions.empty() ? text : text + ')';
}

}  // namespace

Refusal restrictSystemCalls(Reader reader) {
    const Filter filter{seccomp_init(SCMP_ACT_ERRNO(EPERM))};
    if (!filter) return "out of memory";
    if (!addRules(filter.get(), reader)) return "the list of system calls was not accepted";
    const int error = seccomp_load(filter.get());
    if (error != 0) return std::system_category().message(-error);
    return std::nullopt;
}

std::string allowedCallsAsText() {
    std::string text;
    std::string_view last;
    for (const Call& call : allowedCalls()) {
        const bool isNew = words(call.use) != last;
        last = words(call.use);
        if (isNew) text.append(text.empty() ? "" : "\n").append("- ").append(last).append(": ");
        text.append(isNew ? "" : ", ").append(described(call));
    }
    return text + '\n';
}

}  // namespace tessary::sandbox

// In the C library's place, for all libraries that read fonts. The filter cannot look at a path: so
// an open file's status is not asked for as that of a path, and whether a file can be read is found
// out by opening it.
extern "C" int fstat(int file, struct stat* status) noexcept {
    return static_cast<int>(::syscall(SYS_fstat, file, status));
}
extern "C" int fstat64(int file, struct stat64* status) noexcept {
    return static_cast<int>(::syscall(SYS_fstat, file, status));
}
extern "C" int access(const char* path, int how) noexcept {
    if (how != R_OK) return ::faccessat(AT_FDCWD, path, how, 0);
    return tessary::system::Descriptor{::open(path, O_RDONLY | O_NONBLOCK | O_CLOEXEC)}.number() < 0
               ? -1
               : 0;
}
