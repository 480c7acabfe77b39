#include "snapshot/snapshot_store.h"

#include "platform/foundation/surroundings.h"

namespace tessary::snapshot {

std::optional<std::string> SnapshotStore::appGroup() {
    std::optional<std::string> group = foundation::surroundings().information("TessaryAppGroup");
    // A build variable that was never expanded, or one that expanded to nothing before the dot.
    if (group && (group->starts_with('.') || group->starts_with('$'))) return std::nullopt;
    return group;
}

std::optional<AlarmsSnapshot> SnapshotStore::loadAlarms() {
    std::optional<AlarmsSnapshot> alarms = read<AlarmsSnapshot>("alarms");
    if (alarms && alarms->schemaVersion > supportedSchemaVersion) return std::nullopt;
    return alarms;
}

std::optional<std::string> SnapshotStore::readBytes(std::string_view name) {
    const std::optional<std::string> group = appGroup();
    if (!group) return std::nullopt;
    const auto container = foundation::surroundings().container(*group);
    if (!container) return std::nullopt;
    auto contents =
        foundation::surroundings().read(*container / ("widgets/" + std::string{name} + ".json"));
    if (auto* bytes = std::get_if<std::string>(&contents)) return std::move(*bytes);
    return std::nullopt;
}

}  // namespace tessary::snapshot
