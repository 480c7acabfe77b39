#include "snapshot/snapshot_store.h"

namespace tessary::snapshot {

std::optional<std::string> SnapshotStore::appGroup() {
    AppGroup group = snapshot::appGroup();
    if (group.rule != AppGroup::Rule::identifier) return std::nullopt;
    return std::move(group.value);
}

std::optional<AlarmsSnapshot> SnapshotStore::loadAlarms() {
    std::optional<AlarmsSnapshot> alarms = read<AlarmsSnapshot>("alarms");
    if (alarms && !isSupported(*alarms)) return std::nullopt;
    return alarms;
}

}  // namespace tessary::snapshot
