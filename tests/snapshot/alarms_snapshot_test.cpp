#include "snapshot/alarms_snapshot.h"

#include <gtest/gtest.h>

#include "support/container.h"

namespace tessary::snapshot {
namespace {

using foundation::decodeJSON;

const std::string plain =
    R"({"schemaVersion":1,"state":"s","updatedMs":1,"intervalSeconds":1,"firing":1,"targets":[)"
    R"({"profile":"p","region":"r","firing":1,"authExpired":true,"failed":true}],"topAlarms":[)"
    R"({"name":"n","profile":"p","region":"r","updatedMs":1,"reason":"w"}]})";

bool decodes(const std::string& text) {
    return static_cast<bool>(decodeJSON<AlarmsSnapshot>(text));
}

TEST(AlarmsSnapshot, DecodesTheExample) {
    const std::vector<Target> targets{{"prod", "us-east-1", 2, false, false},
                                      {"prod", "eu-west-1", 1, false, true},
                                      {"shared", "us-east-1", 1, true, false}};
    const std::vector<Alarm> alarms{
        {"api-5xx-rate-high", "prod", "us-east-1", 1731772740000, "Threshold Crossed"},
        {"orders-queue-age", "prod", "eu-west-1", {}, "Threshold Crossed"},
        {"ingest-lambda-errors", "shared", "us-east-1", {}, ""}};
    EXPECT_EQ(decodeJSON<AlarmsSnapshot>(exampleAlarms).value(),
              (AlarmsSnapshot{1, "watching", 1731772800000, 60, 4, targets, alarms}));
}

TEST(AlarmsSnapshot, NeedsEveryMemberInItsType) {
    ASSERT_TRUE(decodes(plain));
    int members = 0;
    for (const auto& key : foundation::words("schemaVersion state updatedMs intervalSeconds firing "
                                             "targets topAlarms profile region authExpired failed "
                                             "name reason")) {
        const auto quoted = '"' + key + "\":";
        for (auto at = plain.find(quoted); at != plain.npos; at = plain.find(quoted, at + 1)) {
            const auto start = at + quoted.size();
            const bool list = plain[start] == '[';
            const auto end = list ? plain.find(']', at) + 1 : plain.find_first_of(",}", at);
            const bool optional = key == "updatedMs" && at > plain.find("topAlarms");
            ++members;
            EXPECT_EQ(decodes(std::string{plain}.insert(at + 1, "no ")), optional) << key;
            // Each value with the first character of those that it can take the place of.
            for (const auto& pair : foundation::words(R"(
                     true=t ""=" "x"=" -7=1 7.0=1 0=1 []=[ null=- "1"=" [7]=- [null]=- 7.5=- {}=-
                     9223372036854775807=1 9223372036854775808=- 1e19=- "true"=")")) {
                const auto value = pair.substr(0, pair.size() - 2);
                const bool accepted = pair.back() == plain[start] || (optional && value == "null");
                const auto text = std::string{plain}.replace(start, end - start, value);
                EXPECT_EQ(decodes(text), accepted) << text;
            }
        }
    }
    EXPECT_EQ(members, 17);
}

TEST(AlarmsSnapshot, TakesItsKeysInAnyOrderAmongOthersAndTheFirstOfTwo) {
    const std::string mixed =
        R"({"topAlarms":[{"reason":"w","x":[null,1e400],"updatedMs":1,"region":"r","profile":"p",)"
        R"("updatedMs":null,"name":"n","name":7}],"Firing":{"a":{}},"firing":1,"firing":2,)"
        R"("targets":[{"failed":true,"authExpired":true,"authexpired":0,"firing":1,"region":"r",)"
        R"("profile":"p","failed":null}],"intervalSeconds":1,"updatedMs":1,"state":"s",)"
        R"("schemaVersion":1,"schemaVersion":2,"targets":[],"state":{}})";
    EXPECT_EQ(decodeJSON<AlarmsSnapshot>(mixed).value(), decodeJSON<AlarmsSnapshot>(plain).value());
}

TEST(AlarmsSnapshot, TellsAlarmsApartByProfileRegionAndName) {
    EXPECT_EQ((Alarm{"n", "p", "r", 1, "w"}).identity(), (std::string{"p\0r\0n", 5}));
}

}  // namespace
}  // namespace tessary::snapshot
