#include "platform/system/folders.h"

#include <gtest/gtest.h>

#include "support/golden.h"

namespace tessary::system {

TEST(GroupContainers, LieInTheUsersDataFolder) {
    expectTranscript("group_containers.txt", [](const std::string& line) {
        auto asked = words(line);
        asked.resize(3);
        for (auto& word : asked) word = word == "''" ? "" : unescaped(word);
        setVariable("XDG_DATA_HOME", asked[0]);
        setVariable("HOME", asked[1]);
        return groupContainer(asked[2]).value_or("none").string();
    });
}

}  // namespace tessary::system
