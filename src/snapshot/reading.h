// The walk from an application group to a snapshot, and how far it went.
//
// The store takes what comes out at its end; whoever explains a file to a person takes all of it.
//
//     const auto reading = readSnapshot<AlarmsSnapshot>("alarms");     // "widgets/alarms.json"
//     reading.location.file         // "/home/ana/.../widgets/alarms.json"
//     reading.fileFault()           // why its bytes could not be read, or
//     reading.decodingFault()       // why they are no snapshot, or
//     reading.snapshot()            // the snapshot
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "platform/foundation/json_decoding.h"
#include "platform/foundation/named_cases.h"
#include "platform/system/files.h"

namespace tessary::snapshot {

/// The newest layout of the files that is understood; a file of a newer one counts as absent.
inline constexpr std::int64_t supportedSchemaVersion = 1;

template <class Snapshot>
bool isSupported(const Snapshot& snapshot) {
    return snapshot.schemaVersion <= supportedSchemaVersion;
}

/// What the information dictionary holds under "TessaryAppGroup".
struct AppGroup {
    enum class Rule {
        identifier,        ///< it identifies a group
        missing,           ///< there is no text
        beginsWithDot,     ///< a build variable expanded to nothing before the dot
        beginsWithDollar,  ///< a build variable was never expanded
    };
    std::optional<std::string> value{};
    Rule rule{Rule::missing};
    bool operator==(const AppGroup&) const = default;
};

/// The files that are ever read: each NAME means "widgets/NAME.json" in a container.
inline constexpr std::array<std::string_view, 3> fileNames{"alarms", "alarm-pins", "metrics"};
std::filesystem::path pathOf(std::string_view name);

/// Where a snapshot file is to be looked for. None of it need exist.
struct Location {
    AppGroup group{};
    std::optional<std::filesystem::path> container{};  ///< none without a group, or of no group
    std::filesystem::path file{};                      ///< empty without a container
};

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

AppGroup appGroup();

/// The place of "widgets/NAME.json" in the container of the group.
Location locate(std::string_view name);

system::FileContents readContents(const std::filesystem::path& file);

/// Looks up the container, reads the file whole and decodes it; stops at the first that fails.
/// Nothing is cached, and nothing is judged but that.
template <class Snapshot>
Reading<Snapshot> readSnapshot(std::string_view name) {
    Reading<Snapshot> reading{locate(name)};
    if (!reading.location.container) return reading;
    reading.contents = readContents(reading.location.file);
    if (const std::string* bytes = reading.bytes())
        reading.decoded = foundation::decodeJSON<Snapshot>(*bytes);
    return reading;
}

}  // namespace tessary::snapshot

template <>
inline constexpr auto tessary::foundation::namesOf<tessary::snapshot::AppGroup::Rule> =
    tessary::foundation::NamedCases<tessary::snapshot::AppGroup::Rule, 4>{{
        {tessary::snapshot::AppGroup::Rule::identifier, "identifier"},
        {tessary::snapshot::AppGroup::Rule::missing, "missing"},
        {tessary::snapshot::AppGroup::Rule::beginsWithDot, "beginsWithDot"},
        {tessary::snapshot::AppGroup::Rule::beginsWithDollar, "beginsWithDollar"},
    }};
