#include "platform/system/information_dictionary.h"

#include <gtest/gtest.h>

#include "support/fixtures.h"

namespace tessary::system {
namespace {

using namespace std::string_literals;

std::string xml(const std::string& content) {
    return "<?xml version=\"1.0\"?><plist version=\"1.0\">" + content + "</plist>";
}

std::string entry(const std::string& value) {
    return xml("<dict><key>Other</key><true/><key>Group</key>" + value + "</dict>");
}

/// {"Group": "T.x"}: three objects, their offsets, the trailer.
const std::string binary =
    "bplist00\xD1\x01\x02\x55Group\x53T.x\x08\x0B\x11"
    "\0\0\0\0\0\0\1\1\0\0\0\0\0\0\0\3\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\x15"s;

/// The text under "Group" in a file of these bytes.
std::optional<std::string> groupIn(const std::string& bytes) {
    const TemporaryFolder folder;
    return InformationDictionary{folder.write("Info.plist", bytes)}.text("Group");
}

TEST(InformationDictionary, GivesTextsOfItsTopLevel) {
    EXPECT_EQ(groupIn(entry("<string>A1.com.tessary.desktop</string>")), "A1.com.tessary.desktop");
    EXPECT_EQ(groupIn(entry("<string>a &amp; \xC3\xA9</string>")), "a & \xC3\xA9");
    EXPECT_EQ(groupIn(entry("<string></string>")), "");
    EXPECT_EQ(groupIn(binary), "T.x");

    std::string deep;
    while (deep.size() + 100 < largestPropertyList) deep += "<array>";
    for (const auto& bytes :
         {entry("<integer>7</integer>"), entry("<true/>"),
          entry("<array><string>a</string></array>"),
          entry("<dict><key>Group</key><string>a</string></dict>"), xml("<dict/>"), xml(deep),
          xml("<string>Group</string>"), binary.substr(0, 40), "bplist00"s, "Group"s, ""s,
          R"({"Group": "a"})"s,
          entry("<string>a</string>") + std::string(largestPropertyList, ' ')})
        EXPECT_FALSE(groupIn(bytes)) << bytes.substr(0, 200);
}

TEST(InformationDictionary, IsReadAfreshEachTime) {
    const TemporaryFolder folder;
    const InformationDictionary dictionary{folder / "Info.plist"};
    EXPECT_FALSE(dictionary.text("Group"));
    for (const auto& value : {"one"s, "two"s}) {
        folder.write("Info.plist", entry("<string>" + value + "</string>"));
        EXPECT_EQ(dictionary.text("Group"), value);
        EXPECT_FALSE(dictionary.text("group") || dictionary.text("Group\0"s));
    }
}

}  // namespace
}  // namespace tessary::system
