// Where a widget lies: on a monitor, so many points from the nearer edges of its work area. So it
// keeps its place when the screen becomes larger or a panel comes, and finds it again when a
// monitor that was unplugged comes back.
//
//     const Size small{164, 164}, area{1280, 720};
//     const Place place = placeAt({1096, 20}, small, area);     // {.x = {From::end, 20}, ...}
//     describe(place)                                           // "-20,20"
//     topLeft(place, small, {1920, 1080})                       // {1736, 20}
//
// Lengths are points, counted from the edges of the work area, the screen without its panels.
#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace tessary::places {

struct Position {
    int x{}, y{};
    bool operator==(const Position&) const = default;
};

struct Size {
    int width{}, height{};
    bool operator==(const Size&) const = default;
};

/// What a monitor says of itself and where it is plugged in, each empty where that is unknown.
struct MonitorName {
    std::string maker{}, model{}, connector{};
    bool operator==(const MonitorName&) const = default;
    bool operator<(const MonitorName& other) const {
        return std::tie(maker, model, connector) <
               std::tie(other.maker, other.model, other.connector);
    }
};

struct Monitor {
    std::optional<MonitorName> name{};  ///< none of one that is only supposed
    Position origin{};                  ///< of the work area, among those of all monitors
    Size area{};                        ///< the work area's
    int number{};                       ///< the display's own, until a monitor comes or goes
};

enum class From { start, end };  ///< the left or upper edge; the right or lower

struct Offset {
    From from{From::start};
    int points{};  ///< from that edge of the area to the widget's own
    bool operator==(const Offset&) const = default;
};

struct Place {
    std::optional<MonitorName> monitor{};  ///< none until a desktop has shown the widget
    Offset x{}, y{};
    bool operator==(const Place&) const = default;
};

inline constexpr int gridStep = 20;
inline constexpr int farthest = 100'000;  ///< no offset is larger

/// Where a widget of that size comes to lie in the area; within it, if it has room.
Position topLeft(const Place& place, Size widget, Size area);

/// The place, of no monitor, of a widget that lies there: counted from the nearer edges.
Place placeAt(Position topLeft, Size widget, Size area);

/// The same place with whole steps of the grid from its edges, and none beyond them.
Place onGrid(Place place);

/// "20,40", from the right or the lower edge with a minus: "-20,40".
std::string describe(const Place& place);
/// The place, of no monitor, that such a text describes; nothing where it is no such text.
std::optional<Place> parsePlace(std::string_view text);

/// Which of the monitors each name means, where it means one: the one that has it; else one of the
/// same maker and model that is plugged in elsewhere and that no other name means.
std::map<MonitorName, std::size_t> matchMonitors(const std::set<MonitorName>& names,
                                                 const std::vector<Monitor>& monitors);

/// Which of the monitors a point lies on, or is nearest to; there has to be one.
std::size_t monitorAt(Position point, const std::vector<Monitor>& monitors);

/// The place on the grid, with its monitor's name, of a widget that is dropped with its upper left
/// corner there among all monitors: on the one that its centre lies on. There has to be one.
Place dropPlace(Position corner, Size widget, const std::vector<Monitor>& monitors);

}  // namespace tessary::places
