#include "desktop/signs/path_watch.h"

#include <gtest/gtest.h>
#include <span>

#include "desktop/main_loop.h"
#include "support/container.h"

namespace tessary::signs {
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

void follow(const fs::path& path, const fs::path& folder, std::span<const Step> steps) {
    std::string told;
    const PathWatch watch{
        path, {.stirring = [&] { told += "stirring "; }, .changed = [&] { told += "changed "; }}};
    for (const auto& [what, change, counts] : steps) {
        told.clear();
        change(folder);
        EXPECT_TRUE(!counts || until([&] { return told.ends_with("changed "); })) << what;
        runFor(60ms);
        EXPECT_EQ(told, counts ? "stirring changed " : "") << what;
    }
}

TEST(PathWatch, TellsOfEachChangeOnce) {
    const Container home;
    const fs::path container = home / "data" / "groups" / "group";
    follow(container / "widgets/*.json", container, containerSteps);
    follow(home / "etc/localtime", home / "etc", zoneSteps);
}

}  // namespace
}  // namespace tessary::signs
