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

TEST(ThinnedPath, StaysShortForLinesThatGoBackAndForth) {
    const Path one = zigzag(300'000, 97.3).close();
    const auto commands = thinned(Path{one}.append(one), 2).commands();
    EXPECT_LE(commands.size(), 8 * manyCommands + 6);
    EXPECT_GE(commands.size(), manyCommands);
    EXPECT_EQ(commands.back().verb, PathCommand::Verb::close);
    EXPECT_EQ(commands.at(commands.size() - 2), one.commands().at(299'999));
    EXPECT_EQ(commands.at(commands.size() / 2).verb, PathCommand::Verb::move);
}

TEST(ThinnedPath, KeepsShortPathsAndCurves) {
    Path path = zigzag(static_cast<int>(manyCommands), 0.05);
    EXPECT_EQ(thinned(path, 2), path);
    path.curve({1, 1}, {2, 2}, {3, 3});
    EXPECT_EQ(thinned(path, 2), path);
}

}  // namespace
}  // namespace tessary::drawing
