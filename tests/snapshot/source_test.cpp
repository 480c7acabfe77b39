#include "snapshot/source.h"

#include <gtest/gtest.h>

#include "snapshot/alarms_snapshot.h"
#include "snapshot/reading.h"
#include "support/container.h"
#include "support/golden.h"

namespace tessary::snapshot {
namespace {

/// The group, and where its container is.
std::string found(const Places& places) {
    const Location location = Source{.places = places}.locate("alarms");
    std::string text = location.group.value.value_or("none");
    text.append(" ").append(foundation::name(location.group.rule));
    if (location.container) text.append(" ").append(location.file.string());
    return text;
}

TEST(Source, LooksInTheContainerOfTheGroupThatTheDictionaryNames) {
    const TemporaryFolder folder;
    const auto info = folder / "info.json";
    setVariable("XDG_DATA_HOME", "/d");
    const Places installed{{}, {folder / "missing", info, folder / "later"}};
    EXPECT_EQ(found({{}, {folder / "missing", folder / "later"}}), "none missing");
    folder.write("later", R"({"TessaryAppGroup":"later"})");
    expectTranscript("dictionaries.txt", [&](const std::string& dictionary) {
        if (dictionary != "none") folder.write("info.json", dictionary);
        return found(installed);
    });
}

TEST(Source, TakesAContainerByHandForTheOneOfEveryGroup) {
    const TemporaryFolder folder;
    const auto info = folder.write("info.json", R"({"TessaryAppGroup":"A1.x"})");
    EXPECT_EQ(found(Places::given("/c", {})),
              "com.tessary.desktop identifier /c/widgets/alarms.json");
    EXPECT_EQ(found(Places::given("/c", info)), "A1.x identifier /c/widgets/alarms.json");
    EXPECT_EQ(found(Places::given("/c", folder / "missing")), "none missing");
    EXPECT_EQ(Places::given({}, info), (Places{{}, {info}}));
    EXPECT_EQ(Places::given({}, {}).dictionaries.size(), 2);
}

TEST(Source, LoadsWholeFilesOfVersionsUpToOne) {
    const Container container;
    EXPECT_FALSE(load<AlarmsSnapshot>(container.source()));
    for (const auto& [version, accepted] :
         pairs("1=yes 0=yes -5=yes -9223372036854775808=yes 2=no 3=no "
               "9223372036854775807=no 2e0=no 1,=no")) {
        std::string text = exampleAlarms;
        container.put("alarms", text.replace(text.find(": 1,") + 2, 1, version));
        EXPECT_EQ(load<AlarmsSnapshot>(container.source()).has_value(), accepted == "yes")
            << version;
        const auto read = readSnapshot<AlarmsSnapshot>(container.source());
        EXPECT_EQ(*read.bytes(), text);
        EXPECT_EQ(read.snapshot() == nullptr, read.decodingFault() != nullptr);
    }
}

}  // namespace
}  // namespace tessary::snapshot
