// What a request for snapshots is asked with: where the files are, what reads them, what time it
// is. A host makes one and hands it to its providers.
//
//     const Source source{.places = Places::given("build/sample", {})};
//     source.locate("alarms").file      // "build/sample/widgets/alarms.json"
//     source.clock()                    // now
#pragma once

#include <array>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/date.h"
#include "platform/foundation/named_cases.h"
#include "platform/system/files.h"

namespace tessary::snapshot {

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

/// Where the container is looked for.
struct Places {
    /// Stands in for the one of every group, whatever the dictionary holds.
    std::optional<std::filesystem::path> container{};
    /// Information dictionaries, {"TessaryAppGroup": "A1.com.tessary.desktop"}. The first that is
    /// there counts, else the last; without any, the group is the program's own.
    std::vector<std::filesystem::path> dictionaries{};

    /// As a person says it. A dictionary that is given has to name a group even where a container
    /// is given, too; without either the dictionary lies beside the program, where it was built, or
    /// in the shared data, where it was installed.
    static Places given(std::optional<std::filesystem::path> container,
                        const std::optional<std::filesystem::path>& dictionary);
    bool operator==(const Places&) const = default;
};

/// Keeps nothing: all is looked up afresh at each call, from any thread.
struct Source {
    Places places{};
    /// What a file holds, as `system::readFile` tells it; all files of requests are read by it.
    std::function<system::FileContents(const std::filesystem::path&)> read{
        [](const std::filesystem::path& file) { return system::readFile(file); }};
    foundation::Clock clock{foundation::wallClock};

    AppGroup group() const;
    /// The place of "widgets/NAME.json" in the container of the group.
    Location locate(std::string_view name) const;
};

}  // namespace tessary::snapshot

template <>
inline constexpr auto tessary::foundation::namesOf<tessary::snapshot::AppGroup::Rule> =
    tessary::foundation::NamedCases<tessary::snapshot::AppGroup::Rule, 4>{{
        {tessary::snapshot::AppGroup::Rule::identifier, "identifier"},
        {tessary::snapshot::AppGroup::Rule::missing, "missing"},
        {tessary::snapshot::AppGroup::Rule::beginsWithDot, "beginsWithDot"},
        {tessary::snapshot::AppGroup::Rule::beginsWithDollar, "beginsWithDollar"},
    }};
