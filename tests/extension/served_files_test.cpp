#include "extension/served_files.h"

#include <gtest/gtest.h>

#include "support/golden.h"

namespace tessary::extension {

TEST(ServedFiles, AreTheSnapshotsOfOneContainerAndTheDictionary) {
    setVariable("XDG_DATA_HOME", "/d");
    expectTranscript("served_files.txt", [](const std::string& path) {
        using snapshot::Places;
        const bool byHand = ServedFiles{Places::given("/c", "/i/info.json")}(path);
        const bool ofGroups = ServedFiles{Places::given({}, "/i/info.json")}(path);
        return std::string{byHand ? "in /c" : "no"} + (ofGroups ? ", of a group" : ", no");
    });
}

}  // namespace tessary::extension
