// The walk from an application group to a snapshot, and how far it went.
//
// A provider takes what comes out at its end, and whatever goes wrong is no snapshot to it; whoever
// explains a file to a person takes all of it.
//
//     load<AlarmsSnapshot>(source)  // the snapshot in "widgets/alarms.json", or none
//
//     const auto reading = readSnapshot<AlarmsSnapshot>(source);
//     reading.location.file         // "/home/ana/.../widgets/alarms.json"
//     reading.fileFault()           // why its bytes could not be read, or
//     reading.decodingFault()       // why they are no snapshot, or
//     reading.snapshot()            // the snapshot
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>

#include "platform/foundation/json_decoding.h"
#include "snapshot/source.h"

namespace tessary::snapshot {

/// The newest layout of the files that is understood; a file of a newer one counts as absent.
inline constexpr std::int64_t supportedSchemaVersion = 1;

template <class Snapshot>
bool isSupported(const Snapshot& snapshot) {
    return snapshot.schemaVersion <= supportedSchemaVersion;
}

template <class Snapshot>
struct Reading {
    Location location{};
    std::optional<system::FileContents> contents{};
    std::optional<foundation::Result<Snapshot, foundation::DecodingFault>> decoded{};

    const std::string* bytes() const {
        return contents && *contents ? &contents->value() : nullptr;
    }
    const foundation::Fault* fileFault() const {
        return contents && !*contents ? &contents->fault() : nullptr;
    }
    const foundation::DecodingFault* decodingFault() const {
        return decoded && !*decoded ? &decoded->fault() : nullptr;
    }
    /// Of any schema version.
    const Snapshot* snapshot() const { return decoded && *decoded ? &decoded->value() : nullptr; }
};

/// Looks up the container, reads the file of `Snapshot` whole and decodes it; stops at the first
/// that fails. Nothing is cached, and nothing is judged but that.
template <class Snapshot>
Reading<Snapshot> readSnapshot(const Source& source) {
    Reading<Snapshot> reading{source.locate(Snapshot::fileName)};
    if (!reading.location.container) return reading;
    reading.contents = source.read(reading.location.file);
    if (const std::string* bytes = reading.bytes())
        reading.decoded = foundation::decodeJSON<Snapshot>(*bytes);
    return reading;
}

/// The only way of the widgets to the files that the host application writes: what came out at the
/// end, unless its schema version is too new to be understood.
template <class Snapshot>
std::optional<Snapshot> load(const Source& source) {
    auto decoded = readSnapshot<Snapshot>(source).decoded;
    if (!decoded || !*decoded || !isSupported(**decoded)) return std::nullopt;
    return *std::move(*decoded);
}

}  // namespace tessary::snapshot
