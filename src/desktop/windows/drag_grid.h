// What is seen while a widget is dragged: on every monitor a grid of faint dots, and on one of them
// the widget's shadow where it would come to lie.
//
//     if (DragGrid::isPossible()) grid = std::make_unique<DragGrid>(monitors(), picture, size);
//     grid->show(place);
#pragma once

#include <memory>
#include <vector>

#include "desktop/client/messages.h"
#include "desktop/places/placement.h"

namespace tessary::windows {

class DragGrid {
public:
    /// Whether the screen can show anything that is seen through.
    static bool isPossible();

    /// Opens a surface above each monitor's work area, which no pointer meets.
    DragGrid(const std::vector<places::Monitor>& monitors, const client::Picture& picture,
             places::Size widget);
    ~DragGrid();

    /// Moves the shadow to a place of one of the monitors.
    void show(const places::Place& place);

private:
    struct Sheet;

    std::vector<std::unique_ptr<Sheet>> sheets_{};
};

}  // namespace tessary::windows
