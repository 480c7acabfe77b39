#include "platform/system/child.h"

#include <array>
#include <chrono>
#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/system/files.h"
#include "support/golden.h"

namespace tessary::system {
namespace {

using namespace std::chrono_literals;

std::string described(const foundation::Result<Ended, ChildFault>& result) {
    if (!result) return "! " + result.fault().message();
    return std::to_string(result->status) + ' ' + std::to_string(result->signal) + " <" +
           result->output + "> <" + result->errors + '>';
}

/// Behind how many milliseconds it may take.
Errand shell(const std::string& line) {
    return {.words = {"sh", "-c", line.substr(line.find(' ') + 1)},
            .with = {"MOOD=good"},
            .without = {"PAIN", "PAIN_*"},
            .mostOutput = 100,
            .mostErrors = 10,
            .time = std::chrono::milliseconds{std::stoi(line)}};
}

std::ptrdiff_t openFiles() {
    return std::distance(std::filesystem::directory_iterator{"/proc/self/fd"}, {});
}

/// However signals are taken here, and with a descriptor that nobody meant the child to have.
TEST(Child, IsRunToItsEndAndLeavesNothingBehind) {
    for (const auto& [name, value] : pairs("PAIN=1 PAIN_MORE=1 PAINT=1 MOOD=bad"))
        setVariable(name.c_str(), value);
    const Descriptor open{::dup(STDERR_FILENO)};
    const auto before = openFiles();
    for (const int how : {SIG_UNBLOCK, SIG_BLOCK}) {
        sigset_t all;
        sigset_t former;
        ::sigfillset(&all);
        ::pthread_sigmask(how, &all, &former);
        std::signal(SIGPIPE, how == SIG_BLOCK ? SIG_IGN : SIG_DFL);
        expectTranscript("child.txt", [](const std::string& line) {
            const auto start = std::chrono::steady_clock::now();
            const auto said = described(runChild(shell(line)));
            EXPECT_LT(std::chrono::steady_clock::now() - start, 4s) << line;
            EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1) << line;
            return said;
        });
        // Not by way of the shell, which clears them itself. The C library keeps the higher ones.
        const auto held = runChild(
            {.words = {"sed", "-nE", "s/^Sig(Blk|Ign):.*(.{7})$/\\2/p", "/proc/self/status"}});
        EXPECT_EQ(held->output, "0000000\n0000000\n");
        ::pthread_sigmask(SIG_SETMASK, &former, nullptr);
    }
    EXPECT_EQ(openFiles(), before);
}

TEST(Child, TakesItsGroupAlongWhenItsTimeIsOver) {
    const TemporaryFolder folder;
    const auto file = (folder / "id").string();
    EXPECT_FALSE(runChild(shell("300 sleep 60 & echo $! >" + file + "; wait")));
    const int grandchild = std::stoi(contents(file));
    const auto isGone = [&] {
        const auto state = contents("/proc/" + std::to_string(grandchild) + "/stat");
        return state.empty() || state.find(") Z") != state.npos;
    };
    for (int i = 0; i < 100 && !isGone(); ++i) ::usleep(10'000);
    EXPECT_TRUE(isGone());
}

TEST(Child, SaysWhyItCannotStart) {
    using Words = std::vector<std::string>;
    const TemporaryFolder folder;
    const auto plain = folder.write("plain", "exit").string();
    for (const Words& words :
         {Words{}, {""}, {"no-such-program"}, {plain}, {std::string{"a\0b", 3}}}) {
        const auto fault = runChild({.words = words}).fault();
        const bool isMissing = words == Words{""} || words == Words{"no-such-program"};
        EXPECT_EQ(fault.kind == ChildFault::Kind::notFound, isMissing) << fault.message();
        EXPECT_TRUE(fault.message().starts_with("cannot start")) << fault.message();
    }
}

}  // namespace
}  // namespace tessary::system
