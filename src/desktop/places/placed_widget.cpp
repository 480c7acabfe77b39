#include "desktop/places/placed_widget.h"

#include <algorithm>

namespace tessary::places {

namespace {

/// A widget and the step around it.
struct Spot {
    Position at{};
    Size size{};

    bool crowds(const Spot& other) const {
        const auto apart = [](int from, int length, int otherFrom, int otherLength) {
            return from + length + gridStep <= otherFrom ||
                   otherFrom + otherLength + gridStep <= from;
        };
        return !apart(at.x, size.width, other.at.x, other.size.width) &&
               !apart(at.y, size.height, other.at.y, other.size.height);
    }
};

/// Where the widgets of a monitor lie, and those that no desktop has shown yet.
std::vector<Spot> taken(const std::vector<PlacedWidget>& widgets, std::size_t monitor,
                        const std::vector<Monitor>& monitors) {
    const auto matches = matchMonitors(monitorsOf(widgets), monitors);
    const auto isThere = [&](const Place& place) {
        const auto match = place.monitor ? matches.find(*place.monitor) : matches.end();
        return !place.monitor || (match != matches.end() && match->second == monitor);
    };
    std::vector<Spot> spots;
    for (const auto& widget : widgets) {
        const auto size = widget.family.size;
        if (isThere(widget.place))
            spots.push_back({topLeft(widget.place, size, monitors[monitor].area), size});
    }
    return spots;
}

std::optional<Position> freeSpot(const std::vector<Spot>& taken, Size size, Size area) {
    for (int x = gridStep; x + size.width + gridStep <= area.width; x += gridStep)
        for (int y = gridStep; y + size.height + gridStep <= area.height; y += gridStep) {
            const Spot spot{{x, y}, size};
            const auto crowds = [&](const Spot& other) { return spot.crowds(other); };
            if (std::ranges::none_of(taken, crowds)) return spot.at;
        }
    return std::nullopt;
}

}  // namespace

std::string shortName(const std::string& kind) { return kind.substr(kind.rfind('.') + 1); }

std::set<MonitorName> monitorsOf(const std::vector<PlacedWidget>& widgets) {
    std::set<MonitorName> names;
    for (const auto& widget : widgets)
        if (widget.place.monitor) names.insert(*widget.place.monitor);
    return names;
}

Place freePlace(const std::vector<PlacedWidget>& widgets, Size size,
                const std::vector<Monitor>& monitors) {
    const auto placed = [&](std::size_t i, Position at) {
        // Of a monitor that is only supposed, only the first edges are known.
        if (!monitors[i].name) return Place{.x = {From::start, at.x}, .y = {From::start, at.y}};
        auto place = placeAt(at, size, monitors[i].area);
        place.monitor = monitors[i].name;
        return place;
    };
    for (std::size_t i = 0; i < monitors.size(); ++i)
        if (const auto at = freeSpot(taken(widgets, i, monitors), size, monitors[i].area))
            return placed(i, *at);
    return placed(0, {gridStep, gridStep});
}

}  // namespace tessary::places
