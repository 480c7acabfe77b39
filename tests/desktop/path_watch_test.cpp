#include "desktop/container_watch.h"

#include <gtest/gtest.h>

#include "desktop/main_loop.h"
#include "support/container.h"

namespace tessary::desktop {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

struct Step {
    const char* what;
    std::function<void(const fs::path& container)> change;
    bool counts;
};

void write(const fs::path& file) { std::ofstream{file} << "{}"; }

const Step steps[] = {
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
};

TEST(ContainerWatch, TellsOfEachChangeOnce) {
    const Container home;
    const fs::path container = home / "data" / "groups" / "group";
    int told = 0;
    const ContainerWatch watch{container, [&] { ++told; }};
    for (const auto& [what, change, counts] : steps) {
        told = 0;
        change(container);
        EXPECT_TRUE(!counts || until([&] { return told > 0; })) << what;
        runFor(60ms);
        EXPECT_EQ(told, counts ? 1 : 0) << what;
    }
}

}  // namespace
}  // namespace tessary::desktop
