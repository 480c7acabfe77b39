#include "desktop/places/placement.h"

#include <gtest/gtest.h>

#include "desktop/places/placed_widget.h"
#include "support/golden.h"

namespace tessary::places {
namespace {

constexpr Size small{164, 164};

// Wherever it is put, a widget lies there, counts from the nearer edges, and keeps to them in an
// area of another size; on the grid it lies within half a step of there, and inside.
TEST(Placement, KeepsToTheNearerEdges) {
    constexpr Size area{1000, 500}, larger{1600, 900}, tiny{100, 100};
    for (int x = 0; x <= area.width - small.width; x += 7)
        for (int y = 0; y <= area.height - small.height; y += 7) {
            const Position at{x, y};
            const auto place = placeAt(at, small, area);
            EXPECT_EQ(topLeft(place, small, area), at);
            EXPECT_LE(place.x.points, (area.width - small.width) / 2);
            EXPECT_EQ(parsePlace(describe(place)), place);
            const bool right = x > (area.width - small.width) / 2;
            const bool below = y > (area.height - small.height) / 2;
            EXPECT_EQ(topLeft(place, small, larger),
                      (Position{right ? x + 600 : x, below ? y + 400 : y}));
            EXPECT_EQ(topLeft(place, small, tiny), Position{});
            const auto grid = onGrid(place);
            EXPECT_EQ(grid.x.points % gridStep + grid.y.points % gridStep, 0);
            const auto there = topLeft(grid, small, area);
            EXPECT_LE(std::abs(there.x - x) + std::abs(there.y - y), gridStep);
        }
    EXPECT_EQ(onGrid(placeAt({-300, 900}, small, area)), *parsePlace("0,-0"));
}

const MonitorName left{"Dell Inc.", "U2720Q", "DP-1"}, right{"Dell Inc.", "U2720Q", "DP-2"};
const MonitorName panel{"", "", "eDP-1"};
const std::vector<Monitor> desk{{left, {0, 30}, {1000, 470}}, {right, {1000, 0}, {600, 500}, 1}};

// Each name as the number of a monitor, those of one row at once.
TEST(Placement, FindsTheMonitorsThatWereMeant) {
    const MonitorName third{left.maker, left.model, "DP-3"}, other{"LG", left.model, "DP-1"};
    const auto match = [](const std::vector<MonitorName>& names, const std::vector<Monitor>& all) {
        const auto found = matchMonitors({names.begin(), names.end()}, all);
        std::string numbers;
        for (const auto& name : names)
            numbers += found.contains(name) ? std::to_string(found.at(name)) : "-";
        return numbers;
    };
    EXPECT_EQ(match({left, right, panel}, desk), "01-");
    EXPECT_EQ(match({third, other, {}}, desk), "0--");
    EXPECT_EQ(match({left, third}, desk), "01");  // the one that is left of two of a kind
    EXPECT_EQ(match({left, right}, {{third}}), "0-");
    EXPECT_EQ(match({right, left}, {{third}, {right}}), "10");
    EXPECT_EQ(match({panel}, {{}, {panel}}), "1");
    EXPECT_EQ(match({{"", "", "eDP-2"}}, {{panel}}), "-");
}

/// A case is a widget's width and, unless it looks for a spot among those before it, where it is
/// dropped.
TEST(Placement, DropsOntoTheMonitorUnderTheMiddleAndFillsThemWithoutOverlap) {
    std::vector<PlacedWidget> widgets;
    expectTranscript("placed.txt", [&](const std::string& line) {
        Size size{.height = 164};
        Position at;
        std::istringstream in{line};
        const bool isDropped{in >> size.width >> at.x >> at.y};
        const auto place = isDropped ? dropPlace(at, size, desk) : freePlace(widgets, size, desk);
        widgets.push_back({.family = {.size = size}, .place = place});
        return place.monitor->connector + ' ' + describe(place);
    });
}

}  // namespace
}  // namespace tessary::places
