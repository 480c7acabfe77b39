// What a snapshot file holds that is allowed, or ignored, but hardly meant; and why its bytes may
// be no JSON at all. In words for whoever writes the file.
//
//     notesOn(snapshot::readSnapshot<AlarmPinsSnapshot>(source), now)
//         // {"line 12: treshold: not read; did you mean threshold?",
//         //  "pins/0/unit is \"percent\", which is written Percent (7 times)"}
#pragma once

#include <string>
#include <vector>

#include "platform/foundation/date.h"
#include "snapshot/alarms_snapshot.h"
#include "snapshot/pins_snapshot.h"
#include "snapshot/reading.h"

namespace tessary::command {

/// Each once, where it is met first, with how often; not more than a few hundred. A file that was
/// not read has none.
template <class Snapshot>
std::vector<std::string> notesOn(const snapshot::Reading<Snapshot>& reading, foundation::Date now);

extern template std::vector<std::string> notesOn(const snapshot::Reading<snapshot::AlarmsSnapshot>&,
                                                 foundation::Date);
extern template std::vector<std::string> notesOn(
    const snapshot::Reading<snapshot::AlarmPinsSnapshot>&, foundation::Date);
extern template std::vector<std::string> notesOn(
    const snapshot::Reading<snapshot::MetricPinsSnapshot>&, foundation::Date);

}  // namespace tessary::command
