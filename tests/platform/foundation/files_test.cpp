#include "platform/foundation/files.h"

#include <atomic>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <thread>

#include "platform/foundation/fixtures.h"

namespace tessary::foundation {
namespace {

namespace fs = std::filesystem;

std::string bytesOf(const fs::path& path) { return std::get<std::string>(readFile(path)); }

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
        {"larger than 64 MiB", {folder / "sparse"}}};
    for (const auto& [reason, paths] : rows)
        for (const auto& path : paths)
            EXPECT_EQ(std::get<FileFault>(readFile(path)).reason, reason);
    fs::resize_file(folder / "sparse", largestReadableFile);
    EXPECT_EQ(bytesOf(folder / "sparse").size(), largestReadableFile);
}

TEST(Files, ReadsAFileThatGrowsAndShrinks) {
    const TemporaryFolder folder;
    const std::string chunk = "0123456789abcdef";
    const auto file = folder.write("file", "");
    std::atomic<bool> isRead{};
    std::thread writer{[&] {
        for (int round = 0; !isRead; ++round) {
            std::ofstream out{file, round % 50 == 0 ? std::ios::trunc : std::ios::app};
            for (int each = 0; each < 200; ++each) out << chunk;
        }
    }};
    for (int reading = 0; reading < 300; ++reading) {
        const auto bytes = bytesOf(file);
        for (std::size_t at = 0; at < bytes.size(); ++at)  // NUL where it was cut meanwhile
            if (bytes[at] != chunk[at % 16] && bytes[at] != '\0') ADD_FAILURE() << at;
    }
    isRead = true;
    writer.join();
}

}  // namespace
}  // namespace tessary::foundation
