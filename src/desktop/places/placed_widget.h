// A widget as the user placed it on the desktop: what it shows and where.
//
//     PlacedWidget widget{.number = 1, .kind = *kindNamed("alarms")};
//     widget.place = *parsePlace("20,20");
//     sizeOf(widget.family)                            // {164, 164}
//     freePlace({widget}, Family::small, monitors)     // "20,220" of the first monitor: below it
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "desktop/places/placement.h"

namespace tessary::places {

enum class Family { small, medium };

struct PlacedWidget {
    int number{};        ///< from 1, what the command line calls it by
    std::string kind{};  ///< the kind identifier
    Family family{Family::small};
    std::optional<std::string> pin{};  ///< the entity chosen; without one the extension's default
    Place place{};
    bool operator==(const PlacedWidget&) const = default;
};

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

/// The names of the monitors that they are placed on.
std::set<MonitorName> monitorsOf(const std::vector<PlacedWidget>& widgets);

/// The first spot of a monitor's grid, column by column, where a widget lies within the work area
/// and a step away from all others; on the first monitor that has one. Where none has, the first
/// monitor's first spot. There has to be a monitor.
Place freePlace(const std::vector<PlacedWidget>& widgets, Family family,
                const std::vector<Monitor>& monitors);

}  // namespace tessary::places
