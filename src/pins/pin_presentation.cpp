#include "pins/pin_presentation.h"

#include "platform/system/surroundings.h"

namespace tessary::pins {

std::string timeOfDay(const snapshot::SnapshotPoint& point) {
    return system::surroundings().locale.timeOfDay(Date::fromMilliseconds(point.t));
}

}  // namespace tessary::pins
