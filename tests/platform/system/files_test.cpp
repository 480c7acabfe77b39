#include "platform/system/files.h"

#include <atomic>
#include <chrono>
#include <fcntl.h>
#include <functional>
#include <gtest/gtest.h>
#include <optional>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <thread>
#include <unistd.h>
#include <utility>

#include "platform/sandbox/confined.h"
#include "support/fixtures.h"
#include "support/forbidden.h"

/// What happens to a file while it is read.
static std::function<void()> afterReading;

extern "C" ssize_t read(int file, void* bytes, std::size_t size) {
    const ssize_t count = ::syscall(SYS_read, file, bytes, size);
    if (afterReading) std::exchange(afterReading, nullptr)();
    return count;
}

namespace tessary::system {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using std::chrono::milliseconds;

std::string bytesOf(const fs::path& path) { return readFile(path).value(); }

TEST(Files, GivesEveryByteOfARegularFile) {
    const TemporaryFolder folder;
    fs::create_symlink(folder / "file", folder / "link");
    for (const std::size_t size : {0U, 1U, 4095U, 4096U, 70001U}) {
        std::string bytes(size, '\0');
        for (std::size_t at = 0; at < size; ++at) bytes[at] = static_cast<char>(at * 31);
        folder.write("file", bytes);
        EXPECT_EQ(bytesOf(folder / "link"), bytes);
    }
    // A regular file that says it is empty and isn't.
    EXPECT_TRUE(bytesOf("/proc/self/status").find("VmSize") != std::string::npos);
}

TEST(Files, RefusesWhatIsNoRegularFileWithoutWaiting) {
    const TemporaryFolder folder;
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    for (const auto& [link, target] : pairs("to-pipe=pipe dangling=nowhere loop=loop"))
        fs::create_symlink(folder / target, folder / link);
    fs::resize_file(folder.write("sparse", ""), largestReadableFile + 1);
    const std::pair<std::string, std::vector<fs::path>> rows[] = {
        {"not a regular file", {folder / "pipe", folder / "to-pipe", folder / ".", "/dev/zero"}},
        {"No such file or directory", {folder / "absent", folder / "dangling", ""}},
        {"Too many levels of symbolic links", {folder / "loop"}},
        {"Not a directory", {folder / "sparse/below"}},
        {"Invalid argument", {folder / std::string("sparse\0x", 8)}},
        {"larger than 16 MiB", {folder / "sparse"}}};
    const Descriptor news{::inotify_init1(IN_NONBLOCK)};
    ASSERT_GE(::inotify_add_watch(news.number(), (folder / "pipe").c_str(), IN_OPEN), 0);
    for (const auto& [reason, paths] : rows)
        for (const auto& path : paths) EXPECT_EQ(readFile(path).fault().message(), reason);
    char event[sizeof(inotify_event)];
    EXPECT_LT(::read(news.number(), event, sizeof event), 0) << "opened what may heed that";
    fs::resize_file(folder / "sparse", largestReadableFile);
    EXPECT_EQ(bytesOf(folder / "sparse").size(), largestReadableFile);
}

/// What is read of a file that is open while one byte after another is written in place, so far
/// apart, until as many are.
std::string readWhile(milliseconds apart, std::size_t count) {
    const TemporaryFolder folder;
    const auto file = folder.write("file", std::string(count, 'a'));
    std::optional<Descriptor> open{Descriptor{::open(file.c_str(), O_WRONLY)}};
    std::thread writer{[&] {
        for (std::size_t at = 0; at < count; ++at, std::this_thread::sleep_for(apart))
            (void)!::pwrite(open->number(), "b", 1, static_cast<off_t>(at));
        open.reset();
    }};
    const auto contents = readFile(file);
    writer.join();
    return contents ? *contents : contents.fault().message();
}

TEST(Files, WaitsASecondForAWriterInPlaceAndThenForHalfASecondsQuiet) {
    EXPECT_EQ(readWhile(100ms, 3), "bbb");
    EXPECT_EQ(readWhile(30ms, 60), "being written to all the time");
    EXPECT_EQ(readWhile(1500ms, 1), "b");  // has finished, it seems, and does not close
}

TEST(Files, LooksAgainAfterReadingWhereNobodyCanBeKeptFromWriting) {
    EXPECT_EQ(sandbox::confined([] {
                  forbid(SYS_fcntl, F_SETLEASE);
                  const TemporaryFolder folder;
                  const auto file = folder.write("file", "before");
                  std::this_thread::sleep_for(30ms);  // it is settled
                  afterReading = [&] { folder.write("file", "behind"); };
                  return bytesOf(file);
              }),
              "behind");
}

TEST(Files, LooksAtWhatItOpenedWhateverTheNameMeantBefore) {
    const TemporaryFolder folder;
    const auto file = folder.write("file", "text");
    ::mkfifo((folder / "other").c_str(), 0600);
    std::atomic<bool> isDone{};
    std::thread swapper{[&] {
        while (!isDone)
            if (::renameat2(AT_FDCWD, file.c_str(), AT_FDCWD, (folder / "other").c_str(),
                            RENAME_EXCHANGE) != 0)
                ADD_FAILURE() << errno;
    }};
    for (int opening = 0; opening < 100'000; ++opening) {
        const auto opened = openFile(file);
        struct stat status {};
        if (opened && ::fstat(opened->number(), &status) == 0 && !S_ISREG(status.st_mode))
            ADD_FAILURE() << opening;
    }
    isDone = true;
    swapper.join();
}

}  // namespace
}  // namespace tessary::system
