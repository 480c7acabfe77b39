#include "platform/system/path_watch.h"

#include <chrono>
#include <functional>
#include <gtest/gtest.h>
#include <poll.h>
#include <span>
#include <thread>

#include "support/fixtures.h"

namespace tessary::system {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

struct Step {
    const char* what;
    std::function<void(const fs::path& container)> change;
    bool counts;
};

void write(const fs::path& file) { std::ofstream{file} << "{}"; }

/// As `ln -sfn` does it.
void link(const fs::path& target, const fs::path& link) {
    fs::create_symlink(target, link.string() + ".new");
    fs::rename(link.string() + ".new", link);
}

const Step containerSteps[] = {
    {"the container is made", [](auto& c) { fs::create_directories(c); }, true},
    {"something else in it", [](auto& c) { write(c / "notes.json"); }, false},
    {"its folder is made", [](auto& c) { fs::create_directory(c / "widgets"); }, true},
    {"a file is written", [](auto& c) { write(c / "widgets/a.json"); }, true},
    {"one on its way is written", [](auto& c) { write(c / "widgets/a.json.new"); }, false},
    {"and renamed", [](auto& c) { fs::rename(c / "widgets/a.json.new", c / "widgets/a.json"); },
     true},
    {"ten at once",
     [](auto& c) {
         for (int i = 0; i < 10; ++i) write(c / "widgets" / (std::to_string(i) + ".json"));
     },
     true},
    {"one is removed", [](auto& c) { fs::remove(c / "widgets/a.json"); }, true},
    {"the container is moved away", [](auto& c) { fs::rename(c, c.string() + "-old"); }, true},
    {"what moved is written to", [](auto& c) { write(c.string() + "-old/widgets/a.json"); }, false},
    {"another takes its place",
     [](auto& c) {
         fs::create_directories(c.string() + "-new/widgets");
         fs::rename(c.string() + "-new", c);
     },
     true},
    {"which is written to", [](auto& c) { write(c / "widgets/a.json"); }, true},
    {"where it lies is removed", [](auto& c) { fs::remove_all(c.parent_path()); }, true},
    {"and made again", [](auto& c) { fs::create_directories(c / "widgets"); }, true},
    {"and written to", [](auto& c) { write(c / "widgets/a.json"); }, true},
    {"a file elsewhere", [](auto& c) { fs::create_directory(c / "x"), write(c / "x/l.json"); },
     false},
    {"a link leads to it", [](auto& c) { fs::create_symlink("../x/l.json", c / "widgets/l.json"); },
     true},
    {"which is written", [](auto& c) { write(c / "x/l.json"); }, true},
    {"beside which is written", [](auto& c) { write(c / "x/m.json"); }, false},
    {"the link leads to another", [](auto& c) { link("../x/m.json", c / "widgets/l.json"); }, true},
    {"the first is written", [](auto& c) { write(c / "x/l.json"); }, false},
    {"the other is renamed over", [](auto& c) { fs::rename(c / "x/l.json", c / "x/m.json"); },
     true},
    {"a link to itself", [](auto& c) { link("o.json", c / "widgets/o.json"); }, true},
    {"a second name", [](auto& c) { fs::create_hard_link(c / "x/m.json", c / "widgets/h.json"); },
     true},
    {"a link takes the folder's place",
     [](auto& c) {
         fs::rename(c / "widgets", c / "y");
         fs::create_symlink("y", c / "widgets");
     },
     true},
    {"behind which is written", [](auto& c) { write(c / "y/a.json"); }, true},
    {"the link leads to another folder", [](auto& c) { link(c / "x", c / "widgets"); }, true},
    {"in the first is written", [](auto& c) { write(c / "y/a.json"); }, false},
    {"in the other is written", [](auto& c) { write(c / "x/a.json"); }, true},
};

const Step zoneSteps[] = {
    {"the folder is made", [](auto& e) { fs::create_directories(e / "zones"); }, true},
    {"something else", [](auto& e) { write(e / "passwd"); }, false},
    {"it is written", [](auto& e) { write(e / "localtime"); }, true},
    {"it is renamed over", [](auto& e) { fs::rename(e / "passwd", e / "localtime"); }, true},
    {"a link takes its place", [](auto& e) { link("zones/Berlin", e / "localtime"); }, true},
    {"the zone comes", [](auto& e) { write(e / "zones/Berlin"); }, true},
    {"the link leads to another", [](auto& e) { link("zones/Oslo", e / "localtime"); }, true},
};

/// Whether news that matter come within a while; all that come with them are taken in.
bool hearsWithin(PathWatch& watch, std::chrono::milliseconds time) {
    pollfd news{watch.descriptor(), POLLIN, 0};
    bool any = false;
    while (!any && ::poll(&news, 1, static_cast<int>(time.count())) > 0) any = watch.takeEvents();
    if (!any) return false;
    std::this_thread::sleep_for(5ms);
    watch.follow();
    watch.takeEvents();
    return true;
}

void follow(const fs::path& path, const fs::path& folder, std::span<const Step> steps) {
    for (const auto reach : {PathWatch::Reach::all, PathWatch::Reach::lastThree}) {
        const TemporaryFolder root;
        PathWatch watch{{root / path}, reach};
        for (const auto& [what, change, counts] : steps) {
            change(root / folder);
            EXPECT_EQ(hearsWithin(watch, counts ? 5000ms : 20ms), counts) << what;
        }
        EXPECT_TRUE(watch.sight());
    }
}

TEST(PathWatch, HearsOfWhateverChangesAPathsMeaning) {
    follow("data/groups/group/widgets/*.json", "data/groups/group", containerSteps);
    follow("etc/localtime", "etc", zoneSteps);
}

TEST(PathWatch, ReachesTheRootWhereItIsAskedTo) {
    for (const bool all : {true, false}) {
        const TemporaryFolder root;
        fs::create_directories(root / "a/b/c/d");
        PathWatch watch{{root / "a/b/c/d/file"},
                        all ? PathWatch::Reach::all : PathWatch::Reach::lastThree};
        fs::rename(root / "a", root / "z");
        EXPECT_EQ(hearsWithin(watch, all ? 5000ms : 20ms), all);
    }
}

}  // namespace
}  // namespace tessary::system
