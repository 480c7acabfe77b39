#include "platform/system/files.h"

#include <atomic>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

#include "support/fixtures.h"

namespace tessary::system {
namespace {

namespace fs = std::filesystem;

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
    for (const auto& [reason, paths] : rows)
        for (const auto& path : paths) EXPECT_EQ(readFile(path).fault().message(), reason);
    fs::resize_file(folder / "sparse", largestReadableFile);
    EXPECT_EQ(bytesOf(folder / "sparse").size(), largestReadableFile);
}

/// Whether all the bytes are one letter, or there are none.
bool isOfOneWrite(const std::string& bytes) {
    return bytes.find_first_not_of(bytes.front()) == std::string::npos;
}

TEST(Files, NeverMixesWhatAFileHeldBeforeAndAfterAWrite) {
    const TemporaryFolder folder;
    const auto file = folder.write("file", std::string(300'000, 'a'));
    std::atomic<bool> isDone{};
    std::thread writer{[&] {
        for (std::size_t round = 0; !isDone; ++round) {
            const std::string bytes(300'000 + round % 7, static_cast<char>('a' + round % 26));
            const Descriptor open{::open(file.c_str(), O_WRONLY)};
            if (::pwrite(open.number(), bytes.data(), bytes.size(), 0) < 0) ADD_FAILURE();
            if (::ftruncate(open.number(), static_cast<off_t>(bytes.size())) != 0) ADD_FAILURE();
            if (round % 3 != 0) continue;
            fs::rename(folder.write("beside", bytes), file);
        }
    }};
    int whole = 0;
    for (int reading = 0; reading < 400; ++reading) {
        const auto contents = readFile(file);
        if (!contents) continue;
        EXPECT_GE(contents->size(), 300'000);
        EXPECT_TRUE(isOfOneWrite(*contents)) << reading;
        ++whole;
    }
    isDone = true;
    writer.join();
    EXPECT_GT(whole, 40);
}

TEST(Files, WaitsUntilAFileThatIsOpenForWritingHasSettled) {
    const TemporaryFolder folder;
    const auto file = folder.write("file", std::string(100, 'a'));
    const Descriptor open{::open(file.c_str(), O_WRONLY)};  // so there is no lease to be had
    ASSERT_EQ(::pwrite(open.number(), "bb", 2, 0), 2);
    EXPECT_EQ(bytesOf(file), "bb" + std::string(98, 'a'));

    std::atomic<bool> isDone{};
    std::thread writer{[&] {
        while (!isDone) (void)!::pwrite(open.number(), "cc", 2, 0);
    }};
    bool isRefused = false;  // unless the writer is held up for longer than a file takes to settle
    for (int attempt = 0; attempt < 50 && !isRefused; ++attempt)
        isRefused =
            readFile(file) == FileContents{foundation::Fault{"being written to all the time"}};
    EXPECT_TRUE(isRefused);
    isDone = true;
    writer.join();
}

}  // namespace
}  // namespace tessary::system
