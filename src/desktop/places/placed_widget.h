// A widget as the user placed it on the desktop: what it shows and where.
//
//     const Family small{"small", {164, 164}};
//     PlacedWidget widget{1, "com.tessary.desktop.widgets.alarms", small, {}, *parsePlace("20,20")};
//     freePlace({widget}, small.size, monitors)     // "20,220" of the first monitor: below it
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "desktop/places/placement.h"

namespace tessary::places {

/// One of a widget's sizes.
struct Family {
    std::string name{};  ///< for short: "small"
    Size size{};
    bool operator==(const Family&) const = default;
};

struct PlacedWidget {
    int number{};        ///< from 1, what the command line calls it by
    std::string kind{};  ///< the kind identifier
    Family family{};
    std::optional<std::string> pin{};  ///< the entity chosen; without one the extension's default
    Place place{};
    bool operator==(const PlacedWidget&) const = default;
};

/// What a kind is called where the extension has not said it: its last word.
std::string shortName(const std::string& kind);

/// The names of the monitors that they are placed on.
std::set<MonitorName> monitorsOf(const std::vector<PlacedWidget>& widgets);

/// The first spot of a monitor's grid, column by column, where a widget lies within the work area
/// and a step away from all others; on the first monitor that has one. Where none has, the first
/// monitor's first spot. There has to be a monitor.
Place freePlace(const std::vector<PlacedWidget>& widgets, Size size,
                const std::vector<Monitor>& monitors);

}  // namespace tessary::places
