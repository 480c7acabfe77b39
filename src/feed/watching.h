// The commands that add and take out what is watched: `watch` and `unwatch`.
//
//     watch({.profile = "prod"})       // 0; "prod · us-east-1: 3 of 250 alarms firing"
#pragma once

#include "feed/command.h"

namespace tessary::feed {

/// The exit status.
int watch(const WatchCall& call);
int unwatch(const UnwatchCall& call);

}  // namespace tessary::feed
