#include "snapshot/snapshot_store.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "support/container.h"

namespace tessary::snapshot {
namespace {

using foundation::ScopedSurroundings;
using foundation::Surroundings;

std::string withVersion(const std::string& version) {
    std::string text = exampleAlarms;
    return text.replace(text.find(": 1,") + 2, 1, version);
}

TEST(SnapshotStore, LooksInTheContainerOfTheGroupThatTheDictionaryNames) {
    const foundation::TemporaryFolder data;
    foundation::setVariable("XDG_DATA_HOME", data / "");
    struct Case {
        std::optional<std::string> value{};
        bool group{};
        bool file{};
    };
    for (const auto& [value, group, file] :
         {Case{"TEAM.com.tessary.desktop", true, true}, Case{"a.$", true, true},
          Case{"$(TeamIdentifierPrefix)com.tessary.desktop"}, Case{"$"}, Case{".x"},
          Case{".com.tessary.desktop"}, Case{"", true, false}, Case{std::nullopt}}) {
        // Whatever its name, the folder is there.
        const auto widgets = data / ("group-containers/" + value.value_or("")) / "widgets";
        std::filesystem::create_directories(widgets);
        std::ofstream{widgets / "alarms.json"} << exampleAlarms;

        Surroundings surroundings;
        surroundings.information = [value = value](std::string_view key) {
            return key == "TessaryAppGroup" ? value : "another.group";
        };
        const ScopedSurroundings scope{surroundings};
        EXPECT_EQ(SnapshotStore::appGroup(), group ? value : std::nullopt);
        EXPECT_EQ(SnapshotStore::loadAlarms().has_value(), file) << value.value_or("none");
    }
}

TEST(SnapshotStore, LoadsTheAlarmsOfVersionsUpToOne) {
    const Container container;
    const ScopedSurroundings scope{container.surroundings()};
    EXPECT_FALSE(SnapshotStore::loadAlarms()) << "no file";
    for (const auto& [version, accepted] : foundation::pairs(
             "1=yes 0=yes -5=yes 1.0=yes -9223372036854775808=yes 2=no 3=no 9223372036854775807=no "
             "2e0=no 1.5=no \"1\"=no null=no")) {
        container.put("alarms", withVersion(version));
        EXPECT_EQ(SnapshotStore::loadAlarms().has_value(), accepted == "yes") << version;
    }
    container.put("alarms", exampleAlarms);
    EXPECT_EQ(SnapshotStore::loadAlarms()->topAlarms.size(), 3);
}

TEST(SnapshotStore, ReadsNothingFromAHalfWrittenFile) {
    const Container container;
    const ScopedSurroundings scope{container.surroundings()};
    const std::string whole = exampleAlarms;
    for (std::size_t length = 0; length < whole.size(); ++length) {
        container.put("alarms", whole.substr(0, length));
        ASSERT_FALSE(SnapshotStore::loadAlarms()) << length;
    }
    container.put("alarms", whole);
    EXPECT_TRUE(SnapshotStore::loadAlarms());
    container.put("alarms", whole + whole);
    EXPECT_FALSE(SnapshotStore::loadAlarms());
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

TEST(SnapshotStore, IsNotHeldUpByWhatIsNoFile) {
    const Container container;
    const ScopedSurroundings scope{container.surroundings()};
    const auto file = container / "widgets/alarms.json";
    ASSERT_EQ(::mkfifo(file.c_str(), 0600), 0);
    EXPECT_FALSE(SnapshotStore::loadAlarms());
    std::filesystem::remove(file);
    std::filesystem::create_directory(file);
    EXPECT_FALSE(SnapshotStore::loadAlarms());

    Surroundings nowhere = container.surroundings();
    nowhere.container = [](auto) { return std::nullopt; };
    const ScopedSurroundings inner{nowhere};
    EXPECT_FALSE(SnapshotStore::loadAlarms());
}

}  // namespace
}  // namespace tessary::snapshot
