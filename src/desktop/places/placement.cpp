#include "desktop/places/placement.h"

#include <algorithm>

#include "platform/foundation/numbers.h"

namespace tessary::places {

namespace {

int startOf(Offset offset, int length, int room) {
    const int start = offset.from == From::start ? offset.points : room - length - offset.points;
    return std::clamp(start, 0, std::max(room - length, 0));
}

Offset offsetOf(int start, int length, int room) {
    const int end = room - length - start;
    return end < start ? Offset{From::end, end} : Offset{From::start, start};
}

Offset onGrid(Offset offset) {
    const int steps = (std::max(offset.points, 0) + gridStep / 2) / gridStep;
    return {offset.from, steps * gridStep};
}

std::string describe(Offset offset) {
    return (offset.from == From::end ? "-" : "") + std::to_string(offset.points);
}

std::optional<Offset> parseOffset(std::string_view word) {
    const bool fromEnd = word.starts_with('-');
    if (fromEnd) word.remove_prefix(1);
    const auto points = foundation::parsed<int>(word);
    if (!points || *points < 0 || *points > farthest) return {};
    return Offset{fromEnd ? From::end : From::start, *points};
}

/// How far a value lies from a range.
int beyond(int value, int start, int length) {
    return std::max({start - value, value - (start + length), 0});
}

}  // namespace

Position topLeft(const Place& place, Size widget, Size area) {
    return {startOf(place.x, widget.width, area.width),
            startOf(place.y, widget.height, area.height)};
}

Place placeAt(Position topLeft, Size widget, Size area) {
    return {.x = offsetOf(topLeft.x, widget.width, area.width),
            .y = offsetOf(topLeft.y, widget.height, area.height)};
}

Place onGrid(Place place) {
    place.x = onGrid(place.x);
    place.y = onGrid(place.y);
    return place;
}

std::string describe(const Place& place) { return describe(place.x) + "," + describe(place.y); }

std::optional<Place> parsePlace(std::string_view text) {
    const auto comma = text.find(',');
    if (comma == text.npos) return std::nullopt;
    const auto x = parseOffset(text.substr(0, comma)), y = parseOffset(text.substr(comma + 1));
    if (!x || !y) return std::nullopt;
    return Place{.x = *x, .y = *y};
}

std::map<MonitorName, std::size_t> matchMonitors(const std::set<MonitorName>& names,
                                                 const std::vector<Monitor>& monitors) {
    std::map<MonitorName, std::size_t> matches;
    std::map<MonitorName, std::size_t> others;  // in the order of their names, as the first
    for (std::size_t i = 0; i < monitors.size(); ++i)
        if (const auto& name = monitors[i].name)
            (names.contains(*name) ? matches : others).emplace(*name, i);
    for (const auto& name : names) {
        if (matches.contains(name) || name.model.empty()) continue;
        const auto alike = std::ranges::find_if(others, [&](const auto& other) {
            return other.first.maker == name.maker && other.first.model == name.model;
        });
        if (alike == others.end()) continue;
        matches.emplace(name, alike->second);
        others.erase(alike);
    }
    return matches;
}

std::size_t monitorAt(Position point, const std::vector<Monitor>& monitors) {
    const auto distance = [&](const Monitor& monitor) {
        return beyond(point.x, monitor.origin.x, monitor.area.width) +
               beyond(point.y, monitor.origin.y, monitor.area.height);
    };
    return static_cast<std::size_t>(std::ranges::min_element(monitors, {}, distance) -
                                    monitors.begin());
}

Place dropPlace(Position corner, Size widget, const std::vector<Monitor>& monitors) {
    const Position centre{corner.x + widget.width / 2, corner.y + widget.height / 2};
    const auto& [name, origin, area, number] = monitors[monitorAt(centre, monitors)];
    auto place = onGrid(placeAt({corner.x - origin.x, corner.y - origin.y}, widget, area));
    place.monitor = name;
    return place;
}

}  // namespace tessary::places
