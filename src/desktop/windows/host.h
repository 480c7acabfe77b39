// The host application: the program that a click on a widget leads to.
//
//     openHost("tessary://alarms", GDK_CURRENT_TIME)     // in the program for such links
//     openHost({}, GDK_CURRENT_TIME)                     // starts that program
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/foundation/result.h"

namespace tessary::windows {

/// Opens a widget's link, where it has one, at the time of the event that asks for it. A fault
/// where no program is installed for that, where it cannot be started, and for any other kind of
/// link.
foundation::Result<void> openHost(const std::optional<std::string>& link, std::uint32_t time);

}  // namespace tessary::windows
