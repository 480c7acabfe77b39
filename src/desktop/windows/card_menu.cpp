#include "desktop/windows/card_menu.h"

namespace tessary::windows {

using namespace places;

namespace {

/// The ways to the other monitors, which the arrow keys do not take.
void addMonitors(std::vector<MenuItem>& items, const Card::Events& events, Place place,
                 const std::vector<Monitor>& monitors) {
    const auto here = place.monitor;
    for (const auto& other : monitors) {
        if (!other.name || other.name == here) continue;
        const auto& [maker, model, connector] = *other.name;
        place.monitor = other.name;
        items.push_back({"Move to " + (model.empty() ? connector : model),
                         [moved = events.moved, place] { moved(place); }});
    }
}

}  // namespace

std::vector<MenuItem> cardMenu(const Card::Events& events, const Kind& kind, const Family& family,
                               const Place& place, const std::vector<Monitor>& monitors) {
    std::vector<MenuItem> items;
    if (kind.takesPin) items.push_back({"Edit Widget…", events.editChosen});
    for (const auto& other : familiesOf(kind))
        if (other.name != family.name)
            items.push_back(
                {titled(other.name), [chosen = events.familyChosen, other] { chosen(other); }});
    addMonitors(items, events, place, monitors);
    items.push_back({"Remove Widget", events.removeChosen});
    items.push_back({});
    items.push_back({"Add Widget…", events.addChosen});
    items.push_back({"Quit", events.quitChosen});
    return items;
}

}  // namespace tessary::windows
