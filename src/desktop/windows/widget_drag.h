// A widget on its way with the pointer: from the press of the button, which may be but a click, to
// its release.
//
//     WidgetDrag drag{{press.x, press.y}, monitors(), from, size, picture};
//     drag.moveTo({event.x, event.y});            // shows where the widget would come to lie
//     if (const auto place = drag.place()) moved(*place);
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "desktop/client/messages.h"
#include "desktop/places/placement.h"
#include "desktop/windows/drag_grid.h"

namespace tessary::windows {

using places::Position;

class WidgetDrag {
public:
    /// The pointer was pressed at `pressed`, and the widget's upper left corner lies at `corner`,
    /// both among all monitors, of which there has to be one.
    WidgetDrag(Position pressed, std::vector<places::Monitor> monitors, Position corner,
               places::Size widget, client::Picture picture);

    /// Takes the pointer's position, in the same space as where it was pressed.
    void moveTo(Position pointer);

    /// Where the widget would be dropped, on the grid; none while the pointer has stayed about
    /// where it was pressed.
    const std::optional<places::Place>& place() const { return place_; }

    /// Whether the grid shows the place. Where the screen cannot show one, the widget itself has to
    /// go there at once.
    bool hasGrid() const { return grid_ != nullptr; }

private:
    Position pressed_;
    std::vector<places::Monitor> monitors_;
    Position corner_;
    places::Size widget_;
    client::Picture picture_;
    std::optional<places::Place> place_{};
    std::unique_ptr<DragGrid> grid_{};
};

}  // namespace tessary::windows
