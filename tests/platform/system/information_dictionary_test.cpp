#include "platform/system/information_dictionary.h"

#include <gtest/gtest.h>

#include "support/fixtures.h"

namespace tessary::system {
namespace {

TEST(InformationDictionary, NamesTheGroupAndIsReadAfreshEachTime) {
    const TemporaryFolder folder;
    const InformationDictionary dictionary{folder / "info.json"};
    EXPECT_FALSE(dictionary.appGroup());
    for (const auto& [bytes, group] : pairs(R"(
        {"TessaryAppGroup":"A1.x"}=A1.x  {"Other":[7],"TessaryAppGroup":"\u00e9"}=é
        {"TessaryAppGroup":""}=          {"TessaryAppGroup":7}=none
        {"TessaryAppGroup":["A1.x"]}=none  {"tessaryappgroup":"A1.x"}=none  {}=none
        ["TessaryAppGroup"]=none  {"TessaryAppGroup":"A1.x"=none  "A1.x"=none)")) {
        folder.write("info.json", bytes);
        EXPECT_EQ(dictionary.appGroup().value_or("none"), group) << bytes;
    }
}

}  // namespace
}  // namespace tessary::system
