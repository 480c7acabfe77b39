#include "alarm_pin/alarm_pin_display.h"

#include "platform/locale/localized.h"
#include "presentation/palette.h"

namespace tessary::alarm_pin {

using locale::localized;
using presentation::Palette;

std::string stateText(const std::optional<std::string>& state) {
    if (state == "ALARM") return localized("In alarm");
    if (state == "OK") return localized("OK");
    if (state == "INSUFFICIENT_DATA") return localized("Insufficient data");
    return localized("Unknown");
}

views::Color stateColor(const std::optional<std::string>& state) {
    if (state == "ALARM") return Palette::danger;
    if (state == "OK") return Palette::success;
    return Palette::tertiary;
}

}  // namespace tessary::alarm_pin
