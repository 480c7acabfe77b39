// The only way of the widgets to the files that the host application writes.
//
// Each call looks up the container, reads one file whole and decodes it. Nothing is cached, written
// or reported: whatever goes wrong, there is no snapshot, and the widget says what that means.
//
//     SnapshotStore::loadAlarms()                              // "widgets/alarms.json"
//     SnapshotStore::read<MetricPinsSnapshot>("metrics")       // "widgets/metrics.json"
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "snapshot/alarms_snapshot.h"
#include "snapshot/reading.h"

namespace tessary::snapshot {

/// Callable from any thread.
struct SnapshotStore {
    /// The identifier of the application group, from the information dictionary. None where it
    /// holds no text under "TessaryAppGroup", or one that begins with "." or "$".
    static std::optional<std::string> appGroup();

    /// The alarms file; none also where its schema version is too new.
    static std::optional<AlarmsSnapshot> loadAlarms();

    /// The file "widgets/NAME.json", whatever its schema version: the caller judges that.
    template <class Snapshot>
    static std::optional<Snapshot> read(std::string_view name) {
        auto decoded = readSnapshot<Snapshot>(name).decoded;
        if (!decoded || !*decoded) return std::nullopt;
        return std::move(*decoded).value();
    }
};

}  // namespace tessary::snapshot
