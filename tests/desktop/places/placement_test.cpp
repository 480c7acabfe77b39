#include "desktop/places/placement.h"

#include <gtest/gtest.h>

#include "desktop/places/placed_widget.h"

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

TEST(Placement, DropsOntoTheMonitorUnderTheMiddle) {
    const auto dropped = [](int x, int y) {
        const auto place = dropPlace({x, y}, small, desk);
        return place.monitor->connector + " " + describe(place);
    };
    EXPECT_EQ(dropped(49, 61), "DP-1 40,40");
    EXPECT_EQ(dropped(917, 61), "DP-1 -0,40");
    EXPECT_EQ(dropped(919, 61), "DP-2 0,60");
    EXPECT_EQ(dropped(5000, 5000), "DP-2 -0,-0");
    EXPECT_EQ(dropped(-500, -500), "DP-1 0,0");
}

TEST(Placement, FillsTheMonitorsWithoutOverlap) {
    const auto areaOf = [](const PlacedWidget& widget) {
        const auto& monitor = desk[widget.place.monitor == left ? 0 : 1];
        const auto [x, y] = topLeft(widget.place, widget.family.size, monitor.area);
        return std::pair{Position{monitor.origin.x + x, monitor.origin.y + y}, widget.family.size};
    };
    std::vector<PlacedWidget> widgets;
    for (int n = 1; n <= 20; ++n) {
        const Family family{.size = {n % 3 == 0 ? 344 : 164, 164}};
        const auto place = freePlace(widgets, family.size, desk);
        if (!widgets.empty() && place == widgets[0].place) break;  // full
        widgets.push_back({.number = n, .family = family, .place = place});
        const auto [at, size] = areaOf(widgets.back());
        for (int other = 0; other + 1 < n; ++other) {
            const auto [theirs, extent] = areaOf(widgets[static_cast<std::size_t>(other)]);
            EXPECT_TRUE(at.x >= theirs.x + extent.width + gridStep ||
                        theirs.x >= at.x + size.width + gridStep ||
                        at.y >= theirs.y + extent.height + gridStep ||
                        theirs.y >= at.y + size.height + gridStep)
                << n << " lies on " << other + 1;
        }
    }
    EXPECT_EQ(widgets.size(), 11u);
    EXPECT_EQ(widgets.back().place.monitor, right);
}

}  // namespace
}  // namespace tessary::places
