// The commands that pin and unpin: `pin` and `unpin`.
//
//     pin({.pin = settings::AlarmPin{.name = "orders-db-cpu-high"}})     // 0; wherever it was found
#pragma once

#include "feed/command.h"

namespace tessary::feed {

/// The exit status.
int pin(const PinCall& call);
int unpin(const UnpinCall& call);

}  // namespace tessary::feed
