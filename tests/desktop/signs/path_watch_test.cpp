#include "desktop/signs/path_watch.h"

#include <gtest/gtest.h>

#include "desktop/main_loop.h"
#include "support/fixtures.h"

namespace tessary::signs {
namespace {

using namespace std::chrono_literals;

TEST(PathWatch, TellsOfABurstWhenItBeginsAndOnceItIsOver) {
    const TemporaryFolder folder;
    std::string told;
    const PathWatch watch{
        {folder / "*.json"},
        {.stirring = [&] { told += "stirring "; }, .changed = [&] { told += "changed "; }}};
    for (int burst = 0; burst < 2; ++burst) {
        for (int i = 0; i < 10; ++i) folder.write(std::to_string(i) + ".json", "{}");
        EXPECT_TRUE(until([&] { return told.ends_with("changed "); }));
        runFor(60ms);
        EXPECT_EQ(std::exchange(told, ""), "stirring changed ");
    }
}

}  // namespace
}  // namespace tessary::signs
