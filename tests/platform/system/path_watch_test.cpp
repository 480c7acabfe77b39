#include "platform/system/path_watch.h"

#include <chrono>
#include <gtest/gtest.h>
#include <poll.h>
#include <thread>

#include "support/golden.h"

namespace tessary::system {
namespace {

using namespace std::chrono_literals;

/// Whether news that matter have come; all that come with them are taken in.
bool hears(PathWatch& watch) {
    pollfd news{watch.descriptor(), POLLIN, 0};
    bool any = false;
    while (!any && ::poll(&news, 1, 20) > 0) any = watch.takeEvents();
    if (!any) return false;
    std::this_thread::sleep_for(5ms);
    watch.follow();
    watch.takeEvents();
    return true;
}

/// What is heard of each change that a shell makes in a folder of the test's own.
void follow(const std::string& path, const std::string& story, PathWatch::Reach reach) {
    const TemporaryFolder root;
    PathWatch watch{{root / path}, reach};
    expectTranscript(story, [&](const std::string& change) {
        const auto call = "cd " + (root / "").string() + " && " + change;
        EXPECT_EQ(std::system(call.c_str()), 0) << change;
        return hears(watch) ? "heard" : "nothing";
    });
    EXPECT_TRUE(watch.sight());
}

TEST(PathWatch, HearsOfWhateverChangesAPathsMeaning) {
    for (const auto reach : {PathWatch::Reach::all, PathWatch::Reach::lastThree}) {
        follow("data/groups/group/widgets/*.json", "container_changes.txt", reach);
        follow("etc/localtime", "zone_changes.txt", reach);
    }
}

TEST(PathWatch, ReachesTheRootWhereItIsAskedTo) {
    follow("a/b/c/d/file", "root_changes.txt", PathWatch::Reach::all);
    follow("a/b/c/d/file", "near_changes.txt", PathWatch::Reach::lastThree);
}

}  // namespace
}  // namespace tessary::system
