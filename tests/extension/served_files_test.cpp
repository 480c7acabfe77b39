#include "extension/served_files.h"

#include <gtest/gtest.h>

#include "support/fixtures.h"

namespace tessary::extension {
namespace {

using snapshot::Places;

std::string served(const Places& places, const std::string& paths) {
    std::string open;
    for (const auto& path : words(paths))
        if (ServedFiles{places}(path)) open += path + " ";
    return open;
}

TEST(ServedFiles, AreTheSnapshotsOfOneContainerAndTheDictionaries) {
    setVariable("XDG_DATA_HOME", "/d");
    const std::string all =
        "/c/widgets/alarms.json /c/widgets/alarm-pins.json /c/widgets/metrics.json /i/info.json "
        "/d/group-containers/g/widgets/alarms.json "
        "/c/widgets/secrets.json /c/alarms.json /c/x/alarms.json /c/widgets/x/alarms.json "
        "/x/widgets/alarms.json /c/../x/widgets/alarms.json /x/c/widgets/alarms.json "
        "/i/secrets.json /x/info.json /d/widgets/alarms.json /x/g/widgets/alarms.json "
        "/d/group-containers/widgets/alarms.json /d/group-containers/g/widgets/secrets.json "
        "/d/group-containers/../g/widgets/alarms.json /d/group-containers/../widgets/alarms.json "
        "/x/group-containers/g/widgets/alarms.json widgets/alarms.json alarms.json";
    EXPECT_EQ(served(Places::given("/c", "/i/info.json"), all),
              "/c/widgets/alarms.json /c/widgets/alarm-pins.json /c/widgets/metrics.json "
              "/i/info.json ");
    EXPECT_EQ(served(Places::given({}, "/i/info.json"), all),
              "/i/info.json /d/group-containers/g/widgets/alarms.json ");
}

}  // namespace
}  // namespace tessary::extension
