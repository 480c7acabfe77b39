#include "platform/sandbox/sandbox.h"

#include <cstring>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <seccomp.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/un.h>

#include "platform/sandbox/confined.h"
#include "platform/sandbox/doors.h"
#include "platform/system/files.h"
#include "support/golden.h"

namespace tessary::sandbox {

using namespace std::string_literals;
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

alignas(4096) char page[4096];

/// What the kernel answers to a call of this name or number with these arguments: numbers, the
/// parent's, the address of "page" or of a text after an apostrophe.
std::string answerTo(const std::string& line) {
    const auto call = words(line);
    const auto meant = [](const std::string& word) {
        if (word == "parent") return static_cast<long>(::getppid());
        if (word == "page") return reinterpret_cast<long>(page);
        return word.front() == '\'' ? reinterpret_cast<long>(&word[1])
                                    : std::stol(word, nullptr, 0);
    };
    const int number = seccomp_syscall_resolve_name(call[0].c_str());
    std::array<long, 7> with{number < 0 ? std::stol(call[0]) : number};
    std::transform(call.begin() + 1, call.end(), with.begin() + 1, meant);
    const pid_t self = ::getpid();
    errno = 0;
    ::syscall(with[0], with[1], with[2], with[3], with[4], with[5], with[6]);
    if (::syscall(SYS_getpid) != self) ::_exit(2);  // a new process, which is one too many
    return std::strerror(errno);
}

/// What the kernel answers where a guard has been set.
std::string answerBehind(const std::function<Refusal()>& guard, const std::string& line) {
    const Place place;
    return confined([&] {
        std::filesystem::current_path(place.path("open"));
        ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
        const Refusal refusal = guard();
        return refusal.value_or("") + answerTo(line);
    });
}

Refusal filter() { return restrictSystemCalls(Reader::ofNoOther); }
Refusal landlock() { return restrictPaths({{"."}}); }

TEST(Sandbox, RefusesByItsFilterAlone) {
    expectTranscript("filter.txt", [](const auto& line) { return answerBehind(filter, line); });
}

TEST(Sandbox, RefusesByLandlockAlone) {
    expectTranscript("landlock.txt", [](const auto& line) { return answerBehind(landlock, line); });
}

/// But for those two that a kernel hides from all filters, as they are for its own probes, and for
/// what a sanitizer needs.
TEST(Sandbox, RefusesEveryCallThatItsListDoesNotNameAndEveryCommandOfFcntl) {
    std::vector<std::string> lines;
    for (int call = 0; call < 600; ++call) {
        char* const name = seccomp_syscall_resolve_num_arch(SCMP_ARCH_NATIVE, call);
        const std::string word = name == nullptr ? "nameless" : name;
        std::free(name);
        const bool isSpecial = word.starts_with("pipe") || call == 335 || call == 336;
        if (!isSpecial && allowedCallsAsText().find('`' + word + '`') == std::string::npos)
            lines.push_back(std::to_string(call) + " -1 -1 -1 -1 -1 -1");
    }
    for (int command = 0; command < 1100; ++command)
        lines.push_back("fcntl 1 " + std::to_string(command) + " 0");
    EXPECT_EQ(confined([&] {
                  std::string open = filter().value_or("");
                  for (const auto& line : lines)
                      if (answerTo(line) != std::strerror(EPERM)) open += line + "\n";
                  return open;
              }),
              "");
}

TEST(Sandbox, IsDescribedByTheDocument) {
    const auto room = std::filesystem::path{__FILE__}.parent_path();
    const auto oneLine = [](const std::string& text) {
        std::string line;
        for (const auto& word : words(text)) line += word + " ";
        return line;
    };
    const std::string list = oneLine(allowedCallsAsText());
    const std::string document = oneLine(contents(room / "../../../docs/protocol.md"));
    EXPECT_TRUE(document.find(list) != std::string::npos) << list;
}

TEST(Sandbox, KeepsToItselfWhereTheKernelCan) {
    if (::syscall(SYS_landlock_create_ruleset, nullptr, 0, 1) < 6) GTEST_SKIP();
    const sockaddr_un name{AF_UNIX, "\0tessary-doors"};
    const sockaddr_in port{AF_INET, htons(9), {htonl(INADDR_LOOPBACK)}, {}};
    const auto* const abstract = reinterpret_cast<const sockaddr*>(&name);
    const auto* const loopback = reinterpret_cast<const sockaddr*>(&port);
    EXPECT_EQ(confined([&] {
                  const int theirs = ::socket(AF_UNIX, SOCK_DGRAM, 0);
                  const int ours = ::socket(AF_UNIX, SOCK_DGRAM, 0);
                  const int tcp = ::socket(AF_INET, SOCK_STREAM, 0);
                  ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
                  if (::bind(theirs, abstract, 16) != 0 || restrictPaths({})) return "not set"s;
                  std::string said = ::kill(::getppid(), 0) < 0 ? std::strerror(errno) : "sent";
                  said += ::connect(ours, abstract, 16) < 0 ? std::strerror(errno) : "connected";
                  if (::connect(tcp, loopback, sizeof port) < 0) said += std::strerror(errno);
                  if (::bind(tcp, loopback, sizeof port) < 0) said += std::strerror(errno);
                  return said;
              }),
              "Operation not permittedOperation not permittedPermission deniedPermission denied");
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
