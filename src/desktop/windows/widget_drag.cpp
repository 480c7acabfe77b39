#include "desktop/windows/widget_drag.h"

#include <cstdlib>
#include <utility>

namespace tessary::windows {

using namespace places;
using namespace client;

namespace {

/// How far the pointer may stray in a click, in points.
constexpr int clickRadius = 8;

}  // namespace

WidgetDrag::WidgetDrag(Position pressed, std::vector<Monitor> monitors, Position corner,
                       Size widget, Picture picture)
    : pressed_{pressed},
      monitors_{std::move(monitors)},
      corner_{corner},
      widget_{widget},
      picture_{std::move(picture)} {}

void WidgetDrag::moveTo(Position pointer) {
    const Position by{pointer.x - pressed_.x, pointer.y - pressed_.y};
    if (!place_ && std::abs(by.x) < clickRadius && std::abs(by.y) < clickRadius) return;
    if (!place_ && DragGrid::isPossible())
        grid_ = std::make_unique<DragGrid>(monitors_, picture_, widget_);
    place_ = dropPlace({corner_.x + by.x, corner_.y + by.y}, widget_, monitors_);
    if (grid_) grid_->show(*place_);
}

}  // namespace tessary::windows
