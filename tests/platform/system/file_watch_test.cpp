#include "platform/system/file_watch.h"

#include <csignal>
#include <functional>
#include <gtest/gtest.h>

#include "support/fixtures.h"

namespace tessary::system {
namespace {

namespace fs = std::filesystem;

/// Each step changes what the path means, from a folder that is not there to none again. A change
/// that goes unseen would be waited for without an end.
TEST(FileWatch, WakesForWhateverChangesAPathsMeaning) {
    const TemporaryFolder root;
    const fs::path file = root / "link/widgets/alarms.json";
    const std::vector<std::function<void()>> steps{
        [&] {
            fs::create_directories(root / "one/widgets");
            fs::create_symlink("one", root / "link");
        },
        [&] { root.write("one/widgets/alarms.json", "1"); },
        [&] { root.write("one/widgets/alarms.json", "12"); },
        [&] {
            root.write("one/new", "2");
            fs::rename(root / "one/new", file);
        },
        [&] { fs::permissions(file, fs::perms::none); },
        [&] { fs::remove(file); },
        [&] { fs::create_symlink(root / "far.json", file); },
        [&] { root.write("far.json", "3"); },
        [&] {
            fs::copy(root / "one", root / "two",
                     fs::copy_options::recursive | fs::copy_options::copy_symlinks);
            fs::create_symlink(root / "two", root / "swap");
            fs::rename(root / "swap", root / "link");
        },
        [&] { fs::remove_all(root / "two/widgets"); },
        [&] { fs::create_directory(root / "two/widgets"); },
        [&] { fs::rename(root / "two", root / "three"); }};
    for (const auto& step : steps) {
        FileWatch watch{{file}};
        root.write("unrelated", "");
        step();
        EXPECT_EQ(watch.wait(), Woken::change);
    }
}

TEST(FileWatch, EndsAtTheFirstSignal) {
    const TemporaryFolder root;
    for (const int signal : {SIGINT, SIGTERM}) {
        heedEndSignals();
        FileWatch watch{{root / "a/b"}};
        std::raise(signal);
        EXPECT_EQ(watch.wait(), Woken::end);
    }
}

}  // namespace
}  // namespace tessary::system
