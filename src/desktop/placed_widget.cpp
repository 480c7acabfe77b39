#include "desktop/placed_widget.h"

#include <algorithm>

namespace tessary::desktop {

namespace {

constexpr std::string_view kindPrefix = "com.tessary.desktop.widgets.";
constexpr std::string_view shortNames[] = {"alarms", "alarm", "metric"};

bool crowds(const PlacedWidget& other, Position spot, Size size) {
    const auto theirs = sizeOf(other.family);
    const auto apart = [](int from, int length, int otherFrom, int otherLength) {
        return from + length + gridStep <= otherFrom || otherFrom + otherLength + gridStep <= from;
    };
    return !apart(spot.x, size.width, other.position.x, theirs.width) &&
           !apart(spot.y, size.height, other.position.y, theirs.height);
}

}  // namespace

const char* nameOf(Family family) { return family == Family::small ? "small" : "medium"; }

std::optional<Family> familyNamed(std::string_view name) {
    for (const auto family : {Family::small, Family::medium})
        if (name == nameOf(family)) return family;
    return std::nullopt;
}

Size sizeOf(Family family) { return {family == Family::small ? 164 : 344, 164}; }

std::optional<std::string> kindNamed(std::string_view word) {
    for (const auto name : shortNames) {
        auto kind = std::string{kindPrefix}.append(name);
        if (word == name || word == kind) return kind;
    }
    return std::nullopt;
}

std::string shortName(const std::string& kind) {
    return kindNamed(kind) ? kind.substr(kindPrefix.size()) : kind;
}

bool takesPin(const std::string& kind) { return shortName(kind) != "alarms"; }

Position freeSpot(const std::vector<PlacedWidget>& widgets, Family family, Size area) {
    const auto size = sizeOf(family);
    for (int x = gridStep; x + size.width + gridStep <= area.width; x += gridStep)
        for (int y = gridStep; y + size.height + gridStep <= area.height; y += gridStep) {
            const auto blocks = [&](const auto& other) { return crowds(other, {x, y}, size); };
            if (std::ranges::none_of(widgets, blocks)) return {x, y};
        }
    return {gridStep, gridStep};
}

}  // namespace tessary::desktop
