#include "snapshot/snapshot_store.h"

#include <gtest/gtest.h>

#include "support/container.h"

namespace tessary::snapshot {
namespace {

using system::ScopedSurroundings;

std::string withVersion(const std::string& version) {
    std::string text = exampleAlarms;
    return text.replace(text.find(": 1,") + 2, 1, version);
}

TEST(SnapshotStore, LooksInTheContainerOfTheGroupThatTheDictionaryNames) {
    const TemporaryFolder data;
    setVariable("XDG_DATA_HOME", data / "");
    // What the dictionary holds; whether that names a group; whether the group has a container.
    for (const auto& [value, group, file] : std::vector<std::tuple<const char*, bool, bool>>{
             {"TEAM.com.tessary.desktop", true, true},
             {"a.$", true, true},
             {"", true, false},
             {"$(TeamIdentifierPrefix)com.tessary.desktop", false, false},
             {"$", false, false},
             {".com.tessary.desktop", false, false},
             {nullptr, false, false}}) {
        const auto text = value ? std::optional<std::string>{value} : std::nullopt;
        const auto widgets = data / ("group-containers/" + text.value_or("")) / "widgets";
        std::filesystem::create_directories(widgets);  // there, whatever its name
        std::ofstream{widgets / "alarms.json"} << exampleAlarms;
        const ScopedSurroundings scope{{.information = [&](std::string_view key) {
            return key == "TessaryAppGroup" ? text : "another.group";
        }}};
        EXPECT_EQ(SnapshotStore::appGroup(), group ? text : std::nullopt);
        EXPECT_EQ(SnapshotStore::loadAlarms().has_value(), file) << text.value_or("none");
    }
}

TEST(SnapshotStore, LoadsWholeAlarmsFilesOfVersionsUpToOne) {
    const Container container;
    const ScopedSurroundings scope{container.surroundings()};
    for (const auto& [version, accepted] :
         pairs("1=yes 0=yes -5=yes -9223372036854775808=yes 2=no 3=no "
               "9223372036854775807=no 2e0=no")) {
        container.put("alarms", withVersion(version));
        EXPECT_EQ(SnapshotStore::loadAlarms().has_value(), accepted == "yes") << version;
    }
}

TEST(SnapshotStore, ReadsAnyNamedFileAndLeavesItsVersionToTheCaller) {
    const Container container;
    const ScopedSurroundings scope{container.surroundings()};
    for (const std::string name : {"metrics", "alarm-pins"}) {
        EXPECT_FALSE(SnapshotStore::read<AlarmsSnapshot>(name));
        container.put(name, withVersion("2"));
        EXPECT_EQ(SnapshotStore::read<AlarmsSnapshot>(name)->schemaVersion, 2);
    }
    EXPECT_FALSE(SnapshotStore::loadAlarms());
}

}  // namespace
}  // namespace tessary::snapshot
