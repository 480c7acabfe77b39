#include "platform/system/folders.h"

#include <gtest/gtest.h>

#include "support/fixtures.h"

namespace tessary::system {

TEST(GroupContainers, LieInTheUsersDataFolder) {
    // XDG_DATA_HOME and HOME, and the folder of the containers; "-" for none.
    for (const auto& [variables, folder] : pairs(R"(
        /data,/people/a=/data /data,-=/data -,/people/a=/people/a/.local/share -,-=- -,=- ,home=-
        ,/people/a=/people/a/.local/share data,/people/a=/people/a/.local/share)")) {
        setVariable("XDG_DATA_HOME", variables.substr(0, variables.find(',')));
        setVariable("HOME", variables.substr(variables.find(',') + 1));
        const auto expected = folder == "-" ? "-" : folder + "/group-containers/G.x";
        EXPECT_EQ(groupContainer("G.x").value_or("-"), expected) << variables;
    }
    setVariable("XDG_DATA_HOME", "/data");
    for (const std::string_view name : {"", ".", "..", "/", "a/b", "../a", "/a", "a/"})
        EXPECT_FALSE(groupContainer(name)) << name;
    EXPECT_FALSE(groupContainer(std::string_view{"a\0b", 3}));
    EXPECT_EQ(groupContainer("..."), "/data/group-containers/...");
}

}  // namespace tessary::system
