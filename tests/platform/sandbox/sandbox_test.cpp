#include "platform/sandbox/sandbox.h"

#include <csignal>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sched.h>
#include <seccomp.h>
#include <set>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/un.h>

#include "platform/sandbox/confined.h"
#include "platform/sandbox/doors.h"
#include "platform/system/files.h"
#include "support/fixtures.h"

namespace tessary::sandbox {

using system::Descriptor;

namespace {

/// The folder that a confined process may read, with a file in it, and one beside it that it may
/// not.
struct Place : TemporaryFolder {
    Place() {
        std::filesystem::create_directory(*this / "open");
        write("open/file", "text");
        write("shut", "secret");
        std::filesystem::create_symlink("../shut", *this / "open/out");
    }
    std::string path(const std::string& name) const { return *this / name; }
};

/// A way out: the call that would take it. The folder that may be read is the working directory,
/// descriptor 1 a pipe, `ends` a socket pair.
struct Door {
    std::string name;
    long call{};
    std::array<long, 6> arguments{};
};

long at(const void* place) { return reinterpret_cast<long>(place); }

int ends[2];
const rlimit none{1, 1};
const struct sockaddr_un abstract { AF_UNIX, "\0tessary-doors" };
const struct sockaddr_in loopback {
    AF_INET, htons(9), {htonl(INADDR_LOOPBACK)}, {}
};
alignas(4096) char page[4096];
struct stat status;

/// What the filter alone refuses.
const std::vector<Door> calls{
    {"socket", SYS_socket, {AF_INET, SOCK_STREAM}},
    {"unix socket", SYS_socket, {AF_UNIX, SOCK_STREAM}},
    {"netlink", SYS_socket, {AF_NETLINK, SOCK_RAW}},
    {"socket pair", SYS_socketpair, {AF_UNIX, SOCK_STREAM, 0, at(ends)}},
    {"send to an address", SYS_sendto, {0, at(page), 1, MSG_NOSIGNAL, at(&abstract), 16}},
    {"send out of band", SYS_sendto, {0, at(page), 1, MSG_NOSIGNAL | MSG_OOB, 0, 0}},
    {"fork", SYS_clone, {SIGCHLD}},
    {"thread", SYS_clone, {CLONE_VM | CLONE_SIGHAND | CLONE_THREAD, 0}},
    {"thread of a new kind", SYS_clone3, {at(page), 64}},
    {"thread signal", SYS_tgkill, {::getppid(), ::getppid(), 0}},
    {"memory to execute", SYS_mmap, {0, 64, PROT_EXEC, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0}},
    {"execute memory", SYS_mprotect, {at(page), 4096, PROT_READ | PROT_EXEC}},
    {"poison memory", SYS_madvise, {at(page), 4096, MADV_HWPOISON}},
    {"limit", SYS_prlimit64, {0, RLIMIT_CORE, at(&none), 0}},
    {"limit of another", SYS_prlimit64, {::getppid(), RLIMIT_CORE, 0, at(page)}},
    {"clock of another", SYS_clock_gettime, {~0L << 3 | 2, at(page)}},
    {"name", SYS_prctl, {PR_SET_NAME, at("x")}},
    {"terminal", SYS_ioctl, {0, TIOCSTI, at("x")}},
    {"tell of a path", SYS_newfstatat, {AT_FDCWD, at("file"), at(&status), 0}},
    {"as of a descriptor",
     SYS_newfstatat,
     {AT_FDCWD, at("/etc/passwd"), at(&status), AT_EMPTY_PATH}},
    {"ask for access", SYS_access, {at("file"), R_OK}},
    {"list", SYS_getdents64, {0, at(page), sizeof page}},
    {"point at a path", SYS_openat, {AT_FDCWD, at("file"), O_PATH}},
    {"open a folder", SYS_openat, {AT_FDCWD, at("."), O_RDONLY | O_DIRECTORY}},
    {"open to be told", SYS_openat, {AT_FDCWD, at("file"), O_RDONLY | O_ASYNC}},
    {"open to write", SYS_open, {at("file"), O_WRONLY}},
    {"open both ways", SYS_open, {at("file"), O_RDWR}},
    {"open to cut", SYS_open, {at("file"), O_RDONLY | O_TRUNC}},
    {"create", SYS_open, {at("new"), O_RDONLY | O_CREAT, 0600}},
    {"mode", SYS_chmod, {at("file"), 0}},
    {"times", SYS_utimensat, {AT_FDCWD, at("file"), 0, 0}},
};

/// What Landlock alone refuses.
const std::vector<Door> paths{
    {"open to write", SYS_open, {at("file"), O_WRONLY}},
    {"open both ways", SYS_open, {at("file"), O_RDWR}},
    {"create", SYS_open, {at("new"), O_RDONLY | O_CREAT, 0600}},
    {"nameless file", SYS_open, {at("."), O_TMPFILE | O_RDWR, 0600}},
    {"cut", SYS_truncate, {at("file"), 0}},
    {"remove", SYS_unlink, {at("file")}},
    {"rename", SYS_rename, {at("file"), at("b")}},
    {"link", SYS_link, {at("file"), at("b")}},
    {"symbolic link", SYS_symlink, {at("file"), at("b")}},
    {"folder", SYS_mkdir, {at("b"), 0700}},
    {"pipe by name", SYS_mknod, {at("b"), S_IFIFO | 0600, 0}},
    {"exec", SYS_execve, {at("/bin/true"), 0, 0}},
    {"read elsewhere", SYS_open, {at("../shut"), O_RDONLY}},
    {"read through a link", SYS_open, {at("out"), O_RDONLY}},
    {"list elsewhere", SYS_open, {at("/"), O_RDONLY | O_DIRECTORY}},
    {"read the system", SYS_open, {at("/etc/passwd"), O_RDONLY}},
    {"read a process", SYS_open, {at("/proc/self/environ"), O_RDONLY}},
};

/// The doors that the kernel does not refuse with one of these errors, one a line.
std::string openDoors(const std::vector<Door>& doors, const std::set<int>& refusals) {
    std::string open;
    const pid_t self = ::getpid();
    for (const auto& [name, call, with] : doors) {
        errno = 0;
        const long result = ::syscall(call, with[0], with[1], with[2], with[3], with[4], with[5]);
        if (::syscall(SYS_getpid) != self) ::_exit(2);  // a new process, which is one too many
        if (result != -1 || !refusals.contains(errno))
            open += name + ": " + std::to_string(errno) + "\n";
    }
    return open;
}

/// A row for every command of fcntl but the one that is left, and that with another value.
std::vector<Door> commands() {
    std::vector<Door> doors;
    for (long command = 0; command < 1100; ++command)
        doors.push_back({"command " + std::to_string(command), SYS_fcntl, {1, command, 0}});
    return doors;
}

/// A row for every call that the list does not name, but for those two that a kernel hides from all
/// filters, as they are for its own probes.
std::vector<Door> callsNotIn(const std::string& list) {
    std::vector<Door> doors;
    for (int call = 0; call < 600; ++call) {
        char* const name = seccomp_syscall_resolve_num_arch(SCMP_ARCH_NATIVE, call);
        const std::string word = name == nullptr ? "nameless" : name;
        std::free(name);
        const bool isSpecial = word.starts_with("pipe") || call == 335 || call == 336;
        if (!isSpecial && list.find('`' + word + '`') == list.npos)
            doors.push_back({word, call, {-1, -1, -1, -1, -1, -1}});
    }
    return doors;
}

TEST(Sandbox, IsDescribedByTheDocument) {
    const auto document =
        std::filesystem::path{__FILE__}.parent_path() / "../../../docs/protocol.md";
    const auto oneLine = [](const std::string& text) {
        std::string line;
        for (const auto& word : words(text)) line += word + " ";
        return line;
    };
    const std::string list = oneLine(allowedCallsAsText());
    EXPECT_TRUE(oneLine(contents(document)).find(list) != std::string::npos) << list;
}

TEST(Sandbox, RefusesByItsFilterAlone) {
    const Place place;
    std::filesystem::current_path(place.path("open"));
    EXPECT_EQ(confined([&] {
                  const std::string list = allowedCallsAsText();
                  const auto refusal = restrictSystemCalls(Reader::ofNoOther);
                  return refusal.value_or("") + openDoors(calls, {EPERM}) +
                         openDoors(commands(), {EPERM}) + openDoors(callsNotIn(list), {EPERM});
              }),
              "");
}

/// By Landlock alone, which asks for this first of whoever is not root.
std::string refusalOf(const std::optional<std::vector<std::filesystem::path>>& readable) {
    ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
    return restrictPaths(readable).value_or("");
}

TEST(Sandbox, RefusesByLandlockAlone) {
    const Place place;
    EXPECT_EQ(confined([&] {
                  std::filesystem::current_path(place.path("open"));
                  const std::string refusal = refusalOf({{place.path("open")}});
                  return refusal + openDoors(paths, {EACCES});
              }),
              "");
    EXPECT_TRUE(std::filesystem::exists(place.path("open/file")));
}

TEST(Sandbox, KeepsToItselfWhereTheKernelCan) {
    if (::syscall(SYS_landlock_create_ruleset, nullptr, 0, 1) < 6) GTEST_SKIP();
    EXPECT_EQ(confined([&] {
                  const int theirs = ::socket(AF_UNIX, SOCK_DGRAM, 0);
                  const int unixes = ::socket(AF_UNIX, SOCK_DGRAM, 0);
                  const int tcp = ::socket(AF_INET, SOCK_STREAM, 0);
                  (void)::bind(theirs, reinterpret_cast<const sockaddr*>(&abstract), 16);
                  const std::string refusal = refusalOf({});
                  return refusal +
                         openDoors({{"signal", SYS_kill, {::getppid(), 0}},
                                    {"abstract", SYS_connect, {unixes, at(&abstract), 16}},
                                    {"connect", SYS_connect, {tcp, at(&loopback), sizeof loopback}},
                                    {"bind", SYS_bind, {tcp, at(&loopback), sizeof loopback}}},
                                   {EPERM, EACCES});
              }),
              "");
}

TEST(Sandbox, LeavesReadingAndMemory) {
    const Place place;
    const std::string said = confined([&] {
        const auto in = [&](const char* name) { return place.path(name); };
        enterSandbox({.readable = {{in("open"), in("absent"), "/proc/self"}}});
        struct stat file;
        const Descriptor opened{::open(in("open/file").c_str(), O_RDONLY | O_CLOEXEC)};
        return contents(in("open/file")) + std::to_string(::fstat(opened.number(), &file)) +
               std::to_string(::access(in("open/file").c_str(), R_OK)) +
               std::to_string(::access(in("shut").c_str(), R_OK)) +
               std::string(std::size_t{50} << 20U, ' ').substr(0, 1) +
               contents("/proc/self/status");
    });
    using testing::HasSubstr;
    EXPECT_THAT(said, testing::AllOf(HasSubstr("text00-1 "), HasSubstr("NoNewPrivs:\t1"),
                                     HasSubstr("Seccomp:\t2")));
}

TEST(Sandbox, LeavesReadingWhereNoPathsAreGiven) {
    const Place place;
    EXPECT_EQ(confined([&] {
                  enterSandbox({});
                  const int read = ::open(place.path("shut").c_str(), O_RDONLY);
                  const int written = ::open(place.path("shut").c_str(), O_WRONLY);
                  return std::to_string(read >= 0) + std::to_string(written >= 0);
              }),
              "10");
}

TEST(Sandbox, NamesWhatCouldNotBeShut) {
    const std::string said = confined([] {
        std::string lines;
        for (int time = 0; time < 2; ++time)  // the first time leaves nothing to shut it with
            for (const auto& open : enterSandbox({})) lines += open.substr(0, open.find(':')) + ",";
        return lines;
    });
    EXPECT_EQ(said, "no end of new privileges,no Landlock,no seccomp,");
}

}  // namespace
}  // namespace tessary::sandbox
