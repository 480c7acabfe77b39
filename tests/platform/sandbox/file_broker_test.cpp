#include "platform/sandbox/file_broker.h"

#include <csignal>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <thread>

#include "platform/sandbox/confined.h"
#include "platform/sandbox/sandbox.h"
#include "support/fixtures.h"

namespace tessary::sandbox {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

std::string told(const system::FileContents& contents) {
    return contents ? *contents : "(" + contents.fault().message() + ")";
}

TEST(FileBroker, OpensWhatItMayAndLooksThePathUpEachTime) {
    const TemporaryFolder folder;
    const fs::path file = folder / "container/file";
    EXPECT_EQ(confined([&] {
                  FileBroker broker{[&](const fs::path& path) {
                      return path.parent_path() == file.parent_path();
                  }};
                  std::string said = told(broker.read(file));
                  // The container is made, changed and replaced by somebody else meanwhile.
                  fs::create_directory(file.parent_path());
                  folder.write("container/file", "one");
                  ::mkfifo((folder / "container/pipe").c_str(), 0600);
                  said += told(broker.read(file));
                  fs::rename(folder / "container", folder / "old");
                  fs::create_directory(file.parent_path());
                  folder.write("container/file", "two");
                  ::mkfifo((folder / "container/pipe").c_str(), 0600);
                  enterSandbox({.readable = std::vector<fs::path>{}});
                  for (const fs::path& path : {file, folder / "old/file", folder / "container/pipe",
                                               fs::path{}, fs::path{std::string(5000, 'x')}})
                      said += told(broker.read(path));
                  return said;
              }),
              "(No such file or directory)onetwo(Operation not permitted)(not a regular file)"
              "(No such file or directory)(File name too long)");
}

TEST(FileBroker, IsConfinedOutlivesCtrlCAndIsNotWaitedForWhenItStops) {
    const TemporaryFolder folder;
    folder.write("file", "text");
    const std::string gone = "(the file broker is gone)(the file broker is gone)!";
    for (const auto& [signal, then] :
         {std::pair{SIGINT, std::string{"texttext"}}, {SIGSTOP, gone}, {SIGKILL, gone}})
        EXPECT_EQ(confined([&, signal = signal] {
                      FileBroker broker{[](const auto&) { return true; }, 100ms};
                      std::string said = told(broker.read(folder / "file"));
                      pid_t process = 0;
                      std::ifstream{"/proc/thread-self/children"} >> process;
                      const auto its = "/proc/" + std::to_string(process) + "/status";
                      for (const char* mark : {"NoNewPrivs:\t1", "Seccomp:\t2"})
                          if (contents(its).find(mark) == std::string::npos) said += mark;
                      ::kill(process, signal);
                      said += told(broker.read(folder / "file"));
                      said += told(broker.read(folder / "file"));
                      ::kill(process, SIGKILL);
                      return said + (broker.isGone() ? "!" : "");
                  }),
                  "text" + then);
}

TEST(FileBroker, HandsOverAllOfAFileToManyThreads) {
    // From nothing to more than a message holds.
    const auto sizeOf = [](char name) { return std::size_t(name - 'a') * 32'768; };
    const TemporaryFolder folder;
    for (const char name : std::string{"abcdefgh"})
        folder.write(std::string{name}, std::string(sizeOf(name), name));
    FileBroker broker{[](const auto&) { return true; }};
    std::vector<std::thread> threads;
    for (const char name : std::string{"abcdefgh"})
        threads.emplace_back([&, name] {
            for (int time = 0; time < 50; ++time)
                EXPECT_EQ(told(broker.read(folder / std::string{name})),
                          std::string(sizeOf(name), name));
        });
    for (std::thread& thread : threads) thread.join();
}

}  // namespace
}  // namespace tessary::sandbox
