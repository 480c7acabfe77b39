#include "platform/drawing/thinned_path.h"

#include <cmath>
#include <gtest/gtest.h>
#include <map>

namespace tessary::drawing {
namespace {

using views::Path;
using views::PathCommand;

/// A line of `count` corners across 312 points, up and down without any order.
Path zigzag(int count, double stride) {
    Path path;
    path.move({0, 5});
    for (int i = 1; i < count; ++i)
        path.line(
            {std::fmod(i * stride, 312), 24 + 20 * std::sin(i * 12.9898) * std::cos(i * 0.1)});
    return path;
}

/// The lowest and the highest corner of each half of a pixel across.
std::map<double, std::pair<double, double>> extent(const Path& path, double scale) {
    std::map<double, std::pair<double, double>> extents;
    path.each([&](const PathCommand& c) {
        auto& [low, high] =
            extents.try_emplace(std::floor(c.to.x * scale * 2), c.to.y, c.to.y).first->second;
        low = std::min(low, c.to.y);
        high = std::max(high, c.to.y);
    });
    return extents;
}

TEST(ThinnedPath, KeepsWhatALongLineCovers) {
    for (const double scale : {1.0, 2.0, 3.0, 4.0}) {
        const Path line = zigzag(200'000, 312.0 / 200'000);
        const Path thin = thinned(line, scale);
        EXPECT_EQ(extent(thin, scale), extent(line, scale));
        EXPECT_LE(thin.size(), 4 * (312 * scale * 2 + 1) + 1);
        EXPECT_EQ(thin.commands().front(), line.commands().front());
        EXPECT_EQ(thin.commands().back(), line.commands().back());
    }
}

TEST(ThinnedPath, StaysShortForALineThatGoesBackAndForth) {
    const Path line = zigzag(300'000, 97.3);
    const Path thin = thinned(line, 2);
    EXPECT_LE(thin.size(), 4 * manyCommands + 2);
    EXPECT_GE(thin.size(), manyCommands / 2);
    EXPECT_EQ(thin.commands().back(), line.commands().back());
}

TEST(ThinnedPath, KeepsShortPathsCurvesAndTheirEnds) {
    const Path few = zigzag(static_cast<int>(manyCommands), 0.05);
    EXPECT_EQ(thinned(few, 2), few);
    Path curved = zigzag(10'000, 0.01);
    curved.curve({1, 1}, {2, 2}, {3, 3});
    EXPECT_EQ(thinned(curved, 2), curved);
    Path two = zigzag(10'000, 0.01);
    two.close().append(zigzag(10'000, 0.01));
    const auto commands = thinned(two, 2).commands();
    const auto count = [&](PathCommand::Verb verb) {
        return std::count_if(commands.begin(), commands.end(),
                             [&](const PathCommand& c) { return c.verb == verb; });
    };
    EXPECT_EQ(count(PathCommand::Verb::move), 2);
    EXPECT_EQ(count(PathCommand::Verb::close), 1);
}

}  // namespace
}  // namespace tessary::drawing
