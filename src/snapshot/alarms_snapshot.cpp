#include "snapshot/alarms_snapshot.h"

namespace tessary::snapshot {

std::string Alarm::identity() const { return profile + '\0' + region + '\0' + name; }

}  // namespace tessary::snapshot
