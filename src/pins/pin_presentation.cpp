#include "pins/pin_presentation.h"

#include "platform/foundation/surroundings.h"

namespace tessary::pins {

std::string timeOfDay(const snapshot::SnapshotPoint& point) {
    return foundation::surroundings().locale.timeOfDay(Date::fromMilliseconds(point.t));
}

}  // namespace tessary::pins
