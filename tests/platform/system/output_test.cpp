#include "platform/system/output.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include "support/fixtures.h"

namespace tessary::system {
namespace {

namespace fs = std::filesystem;

std::size_t filesIn(const fs::path& folder) {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator{folder}, {}));
}

/// While it lives, files end at so many bytes.
struct FullDisk {
    explicit FullDisk(rlim_t bytes) {
        ::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &former);
        const rlimit limit{bytes, former.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk() { ::setrlimit(RLIMIT_FSIZE, &former); }
    rlimit former{};
};

TEST(Output, ReplacesAFileAsAWholeOrNotAtAll) {
    const TemporaryFolder folder;
    const fs::path file = folder.write("file", "old");
    const fs::path link = folder / "link";
    fs::create_symlink("file", link);
    ::chmod(file.c_str(), 0640);
    std::ifstream reader{file};
    ASSERT_TRUE(writeFile(link, "newer"));
    EXPECT_EQ(contents(file), "newer");
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(fs::status(file).permissions(), fs::perms{0640});
    EXPECT_EQ(std::string(std::istreambuf_iterator{reader}, {}), "old");  // who reads, goes on

    for (const auto& write : {writeFile, saveFile}) {
        const FullDisk full{1000};
        EXPECT_EQ(write(file, std::string(2000, '.')).fault().message(),
                  "cannot write " + file.string() + ": File too large");
        EXPECT_EQ(contents(file), "newer");
    }
    EXPECT_EQ(filesIn(folder / ""), 2U);
}

TEST(Output, WritesStraightWhatCannotBeReplaced) {
    const TemporaryFolder folder;
    EXPECT_TRUE(writeFile("/dev/null", "x"));
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
    fs::create_symlink(folder / "target", folder / "link");
    EXPECT_TRUE(writeFile(folder / "link", "x"));
    EXPECT_EQ(contents(folder / "target"), "x");
    EXPECT_EQ(writeFile("/dev/full", "x").fault().message(),
              "cannot write /dev/full: No space left on device");
    EXPECT_FALSE(writeFile(folder / "none/file", "x"));
    EXPECT_FALSE(writeFile(folder / "", "x"));
}

TEST(Output, MakesTheFolderOfWhatItSaves) {
    const TemporaryFolder folder;
    ASSERT_TRUE(saveFile(folder / "a/b/file", "x"));
    EXPECT_EQ(contents(folder / "a/b/file"), "x");
    EXPECT_EQ(fs::status(folder / "a/b").permissions(), fs::perms::owner_all);
    EXPECT_FALSE(saveFile(folder / "a/b/file/c", "x"));
}

}  // namespace
}  // namespace tessary::system
