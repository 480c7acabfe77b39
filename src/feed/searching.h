// The commands that list what could be pinned: `alarms` and `metrics`.
//
//     list(AlarmsCall{.text = "cpu"})        // 0; a line for each alarm whose name holds it
#pragma once

#include <string>

#include "feed/command.h"
#include "feed/rounds/listing.h"

namespace tessary::feed {

/// The exit status.
int list(const AlarmsCall& call);
int list(const MetricsCall& call);

/// A metric as it is typed behind `pin metric`: "AWS/RDS CPUUtilization
/// DBInstanceIdentifier=orders".
std::string typed(const rounds::ListedMetric& metric);

}  // namespace tessary::feed
