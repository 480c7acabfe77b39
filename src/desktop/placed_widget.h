// A widget as the user placed it on the desktop: what it shows and where.
//
//     PlacedWidget widget{.number = 1, .kind = *kindNamed("alarms"), .position = {20, 20}};
//     sizeOf(widget.family)                                 // {164, 164}
//     freeSpot({widget}, Family::small, {1280, 720})        // {20, 220}: below it
//
// Lengths are points; positions are counted from the top left of the work area, the screen without
// its panels.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessary::desktop {

struct Position {
    int x{}, y{};
    bool operator==(const Position&) const = default;
};

struct Size {
    int width{}, height{};
    bool operator==(const Size&) const = default;
};

enum class Family { small, medium };

struct PlacedWidget {
    int number{};        ///< from 1, what the command line calls it by
    std::string kind{};  ///< the kind identifier
    Family family{Family::small};
    std::optional<std::string> pin{};  ///< the entity chosen; without one the extension's default
    Position position{};
    bool operator==(const PlacedWidget&) const = default;
};

inline constexpr int gridStep = 20;

/// "small" or "medium".
const char* nameOf(Family family);
std::optional<Family> familyNamed(std::string_view name);
Size sizeOf(Family family);

/// The kind that a word means: a short name ("alarms") or a kind identifier of a known widget.
std::optional<std::string> kindNamed(std::string_view word);
/// The short name of a kind; an unknown kind's own name.
std::string shortName(const std::string& kind);
/// Whether a kind can be set to show one entity.
bool takesPin(const std::string& kind);

/// The first spot of the grid, column by column, where a widget lies within the area and a step
/// away from all others; where there is none, the grid's first.
Position freeSpot(const std::vector<PlacedWidget>& widgets, Family family, Size area);

}  // namespace tessary::desktop
