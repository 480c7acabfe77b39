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
                  enterSandbox({.readable = {{}}});
                  for (const fs::path& path : {file, folder / "old/file", folder / "container/pipe",
                                               fs::path{}, fs::path{std::string(5000, 'x')}})
                      said += told(broker.read(path));
                  return said;
              }),
              "(No such file or directory)onetwo(Operation not permitted)(not a regular file)"
              "(No such file or directory)(File name too long)");
}

TEST(FileBroker, TellsThatItIsGone) {
    const TemporaryFolder folder;
    folder.write("file", "text");
    EXPECT_EQ(confined([&] {
                  FileBroker broker{[](const auto&) { return true; }};
                  std::string said = told(broker.read(folder / "file"));
                  pid_t process = 0;
                  std::ifstream{"/proc/thread-self/children"} >> process;
                  ::kill(process, SIGKILL);
                  ::waitpid(process, nullptr, 0);
                  said += told(broker.read(folder / "file"));
                  return said + (broker.isGone() ? "!" : "");
              }),
              "text(the file broker is gone)!");
}

TEST(FileBroker, ServesManyThreads) {
    const TemporaryFolder folder;
    for (const char name : std::string{"abcdefgh"})
        folder.write(std::string{name}, std::string(20'000, name));
    FileBroker broker{[](const auto&) { return true; }};
    std::vector<std::thread> threads;
    for (const char name : std::string{"abcdefgh"})
        threads.emplace_back([&, name] {
            for (int time = 0; time < 50; ++time)
                EXPECT_EQ(told(broker.read(folder / std::string{name})), std::string(20'000, name));
        });
    for (std::thread& thread : threads) thread.join();
}

}  // namespace
}  // namespace tessary::sandbox
