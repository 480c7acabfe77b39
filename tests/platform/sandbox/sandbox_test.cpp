#include "platform/sandbox/sandbox.h"

#include <csignal>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/inotify.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <thread>

#include "platform/sandbox/confined.h"
#include "support/fixtures.h"

namespace tessary::sandbox {
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

/// A way out: what it is called and the call that would take it, which is to fail with EPERM or
/// EACCES. The folder that may be read is the working directory.
struct Door {
    const char* name;
    std::function<long()> push;
};

int ends[2];
char* const noWords[] = {nullptr};
constexpr rlimit none{1, 1};
const std::vector<Door> doors{
    {"socket", [] { return ::socket(AF_INET, SOCK_STREAM, 0); }},
    {"unix socket", [] { return ::socket(AF_UNIX, SOCK_STREAM, 0); }},
    {"netlink", [] { return ::socket(AF_NETLINK, SOCK_RAW, 0); }},
    {"socket pair", [] { return ::socketpair(AF_UNIX, SOCK_STREAM, 0, ends); }},
    {"io_uring", [] { return ::syscall(SYS_io_uring_setup, 1, nullptr); }},
    {"fork", [] { return ::fork(); }},
    {"vfork", [] { return ::syscall(SYS_vfork); }},
    {"clone", [] { return ::syscall(SYS_clone, SIGCHLD, 0, 0, 0, 0); }},
    {"exec", [] { return ::execve("/bin/true", noWords, noWords); }},
    {"signal", [] { return ::kill(::getppid(), 0); }},
    {"thread signal", [] { return ::syscall(SYS_tgkill, ::getppid(), ::getppid(), 0); }},
    {"trace", [] { return ::syscall(SYS_ptrace, 16, ::getppid(), 0, 0); }},
    {"foreign memory", [] { return ::syscall(SYS_process_vm_readv, ::getppid(), 0, 0, 0, 0, 0); }},
    {"executable memory",
     [] {
         return ::syscall(SYS_mmap, 0, 64, PROT_READ | PROT_EXEC, MAP_PRIVATE | MAP_ANONYMOUS, -1,
                          0);
     }},
    {"limit", [] { return ::setrlimit(RLIMIT_CORE, &none); }},
    {"privileges", [] { return ::syscall(SYS_setuid, 0); }},
    {"mount", [] { return ::syscall(SYS_mount, "none", "/no-such-place", "tmpfs", 0, 0); }},
    {"watch", [] { return ::inotify_init1(0); }},
    {"open to write", [] { return ::open("file", O_WRONLY); }},
    {"open both ways", [] { return ::open("file", O_RDWR); }},
    {"open to cut", [] { return ::open("file", O_RDONLY | O_TRUNC); }},
    {"create", [] { return ::open("new", O_RDONLY | O_CREAT, 0600); }},
    {"nameless file", [] { return ::open(".", O_TMPFILE | O_RDWR, 0600); }},
    {"memory file", [] { return ::memfd_create("x", 0); }},
    {"cut", [] { return ::truncate("file", 0); }},
    {"remove", [] { return ::unlink("file"); }},
    {"rename", [] { return ::rename("file", "b"); }},
    {"link", [] { return ::link("file", "b"); }},
    {"symbolic link", [] { return ::symlink("file", "b"); }},
    {"folder", [] { return ::mkdir("b", 0700); }},
    {"pipe by name", [] { return ::mkfifo("b", 0600); }},
    {"mode", [] { return ::chmod("file", 0); }},
    {"times", [] { return ::utimensat(AT_FDCWD, "file", nullptr, 0); }},
    {"read elsewhere", [] { return ::open("../shut", O_RDONLY); }},
    {"read through a link", [] { return ::open("out", O_RDONLY); }},
    {"list elsewhere", [] { return ::open("/", O_RDONLY | O_DIRECTORY); }},
    {"read the system", [] { return ::open("/etc/passwd", O_RDONLY); }},
    {"read a process", [] { return ::open("/proc/self/environ", O_RDONLY); }},
};

/// The doors that are not shut, one a line.
std::string openDoors() {
    std::string open;
    const pid_t self = ::getpid();
    for (const Door& door : doors) {
        errno = 0;
        const long result = door.push();
        if (::getpid() != self) ::_exit(2);  // a new process, which is one too many
        if (result != -1 || (errno != EPERM && errno != EACCES))
            open += std::string{door.name} + ": " + std::to_string(errno) + "\n";
    }
    return open;
}

TEST(Sandbox, ShutsEveryDoor) {
    const Place place;
    EXPECT_EQ(confined([&] {
                  std::string left;
                  std::filesystem::current_path(place.path("open"));
                  for (const auto& kept : enterSandbox({.readable = {{place.path("open")}}}))
                      left += kept + "\n";
                  return left + openDoors();
              }),
              "");
    EXPECT_TRUE(std::filesystem::exists(place.path("open/file")));
}

TEST(Sandbox, LeavesReadingMemoryAndThreads) {
    const Place place;
    const std::string said = confined([&] {
        enterSandbox({.readable = {{place.path("open"), place.path("absent"), "/proc/self"}}});
        std::string found;
        std::thread{[&] {
            for (const auto& entry : std::filesystem::directory_iterator(place.path("open")))
                found += std::filesystem::is_symlink(entry.path()) ? "link " : "file ";
            found += contents(place.path("open/file"));
            found += std::string(std::size_t{50} << 20U, ' ').substr(0, 1);
        }}.join();
        return found + contents("/proc/self/status");
    });
    using testing::HasSubstr;
    EXPECT_THAT(said, testing::AllOf(HasSubstr("file "), HasSubstr("link "), HasSubstr("text "),
                                     HasSubstr("NoNewPrivs:\t1"), HasSubstr("Seccomp:\t2")));
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
