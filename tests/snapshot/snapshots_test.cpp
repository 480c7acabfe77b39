// The records of the three files: which text decodes, and into which members.
#include <gtest/gtest.h>

#include "snapshot/alarms_snapshot.h"
#include "snapshot/pins_snapshot.h"
#include "support/container.h"

namespace tessary::snapshot {
namespace {

using foundation::decodeJSON;

template <class Snapshot>
struct Sample;
template <>
struct Sample<AlarmsSnapshot> {
    static constexpr const char* text =
        R"({"schemaVersion":1,"state":"s","updatedMs":1,"intervalSeconds":1,"firing":1,"targets":[)"
        R"({"profile":"p","region":"r","firing":1,"authExpired":true,"failed":true}],"topAlarms":[)"
        R"({"name":"n","profile":"p","region":"r","updatedMs":1,"reason":"w"}]})";
    static constexpr const char* optional = " updatedMs ";
    static constexpr int members = 17;
};
template <>
struct Sample<AlarmPinsSnapshot> {
    static constexpr const char* text =
        R"({"schemaVersion":1,"updatedMs":2,"intervalSeconds":3,"pins":[{"id":"i","label":"l",)"
        R"("profile":"p","region":"r","alarmName":"a","state":"s","reason":"w",)"
        R"("stateUpdatedMs":8,"threshold":9.25,"comparison":"c","unit":"u","metricName":"m",)"
        R"("periodSeconds":13,"points":[{"t":-1,"v":42.5}],"latest":{"t":7,"v":-3.5},)"
        R"("error":"e","authExpired":true}]})";
    static constexpr const char* optional =
        " state stateUpdatedMs threshold comparison unit metricName "
        "periodSeconds latest error ";
    static constexpr int members = 25;
};
template <>
struct Sample<MetricPinsSnapshot> {
    static constexpr const char* text =
        R"({"schemaVersion":1,"updatedMs":2,"intervalSeconds":3,"pins":[{"id":"i","label":"l",)"
        R"("profile":"p","region":"r","namespace":"n","metricName":"m","stat":"s",)"
        R"("periodSeconds":13,"unit":"u","points":[{"t":-1,"v":42.5}],"latest":{"t":7,"v":-3.5},)"
        R"("error":"e","authExpired":true}]})";
    static constexpr const char* optional = " unit latest error ";
    static constexpr int members = 21;
};

TEST(Snapshots, PutEveryKeyIntoItsMember) {
    const AlarmsSnapshot alarms{
        1,
        "watching",
        1731772800000,
        60,
        4,
        {{"prod", "us-east-1", 2, false, false},
         {"prod", "eu-west-1", 1, false, true},
         {"shared", "us-east-1", 1, true, false}},
        {{"api-5xx-rate-high", "prod", "us-east-1", 1731772740000, "Threshold Crossed"},
         {"orders-queue-age", "prod", "eu-west-1", {}, "Threshold Crossed"},
         {"ingest-lambda-errors", "shared", "us-east-1", {}, ""}}};
    EXPECT_EQ(decodeJSON<AlarmsSnapshot>(exampleAlarms).value(), alarms);
    EXPECT_EQ((Alarm{"n", "p", "r", 1, "w"}).identity(), (std::string{"p\0r\0n", 5}));
    const AlarmPinsSnapshot::Pin alarm{"i",         "l",  "p", "r", "a", "s", "w",
                                       8,           9.25, "c", "u", "m", 13,  {{-1, 42.5}},
                                       {{7, -3.5}}, "e",  true};
    const MetricPinsSnapshot::Pin metric{"i", "l", "p",          "r",         "n", "m", "s",
                                         13,  "u", {{-1, 42.5}}, {{7, -3.5}}, "e", true};
    EXPECT_EQ(decodeJSON<AlarmPinsSnapshot>(Sample<AlarmPinsSnapshot>::text).value(),
              (AlarmPinsSnapshot{1, 2, 3, {alarm}}));
    EXPECT_EQ(decodeJSON<MetricPinsSnapshot>(Sample<MetricPinsSnapshot>::text).value(),
              (MetricPinsSnapshot{1, 2, 3, {metric}}));
}

/// Where the value ends that begins at `start`.
std::size_t valueEnd(const std::string& text, std::size_t start) {
    int depth = 0;
    std::size_t at = start;
    do {
        if (text[at] == '[' || text[at] == '{') ++depth;
        if (text[at] == ']' || text[at] == '}') --depth;
        ++at;
    } while (depth > 0 || (text[at] != ',' && text[at] != '}'));
    return at;
}

template <class Snapshot>
struct SnapshotFile : testing::Test {};
using Files = testing::Types<AlarmsSnapshot, AlarmPinsSnapshot, MetricPinsSnapshot>;
TYPED_TEST_SUITE(SnapshotFile, Files);

TYPED_TEST(SnapshotFile, NeedsEveryMemberInItsType) {
    const std::string text = Sample<TypeParam>::text;
    const std::string optional = Sample<TypeParam>::optional;
    const auto decodes = [](const std::string& file) {
        return static_cast<bool>(decodeJSON<TypeParam>(file));
    };
    int members = 0;
    for (auto colon = text.find("\":"); colon != text.npos; colon = text.find("\":", colon + 1)) {
        const auto key = text.rfind('"', colon - 1) + 1, start = colon + 2;
        const std::string name = text.substr(key, colon - key), old = text.substr(start);
        const bool spare =
            key > text.find("[{") && optional.find(' ' + name + ' ') != optional.npos;
        ++members;
        EXPECT_EQ(decodes(std::string{text}.insert(key, "no ")), spare) << name;
        EXPECT_TRUE(decodes(std::string{text}.insert(
            key,
            name + "\":" + old.substr(0, valueEnd(text, start) - start) + ",\"x\":[null,{}],\"")))
            << name;
        const bool isNumber = name == "v" || name == "threshold";
        const char kind = isNumber ? '.' : old.front();
        // Each value with the kinds of those that it can take the place of: texts, flags,
        // integers, numbers, lists, points.
        for (const auto& pair : words(R"(
                 true=t ""=" "x"=" -7=1. 7.0=1. 0=1. 42.0=1. -3e2=1. []=[ "1"=" [7]=- [null]=-
                 [{}]=- 7.5=. {}=- {"t":1,"v":42,"w":0}={ {"t":1.5,"v":2}=- {"T":1,"v":2}=-
                 9223372036854775807=1. 9223372036854775808=. 1e400=- "true"=" null=-)")) {
            const std::string value = pair.substr(0, pair.rfind('=')),
                              kinds = pair.substr(pair.rfind('=') + 1);
            const bool isInteger = kind == '-' || std::isdigit(kind) != 0;
            const bool accepted =
                (value == "null" && spare) ||
                (kinds != "-" && kinds.find(isInteger ? '1' : kind) != kinds.npos);
            const auto changed =
                std::string{text}.replace(start, valueEnd(text, start) - start, value);
            EXPECT_EQ(decodes(changed), accepted) << changed;
        }
    }
    EXPECT_EQ(members, Sample<TypeParam>::members);
}

TEST(Snapshots, TakeTheirKeysInAnyOrderAmongOthersAndTheFirstOfTwo) {
    const std::string mixed =
        R"({"topAlarms":[{"reason":"w","x":[null,1e400],"updatedMs":1,"region":"r","profile":"p",)"
        R"("updatedMs":null,"name":"n","name":7}],"Firing":{"a":{}},"firing":1,"firing":2,)"
        R"("targets":[{"failed":true,"authExpired":true,"authexpired":0,"firing":1,"region":"r",)"
        R"("profile":"p","failed":null}],"intervalSeconds":1,"updatedMs":1,"state":"s",)"
        R"("schemaVersion":1,"schemaVersion":2,"targets":[],"state":{}})";
    EXPECT_EQ(decodeJSON<AlarmsSnapshot>(mixed).value(),
              decodeJSON<AlarmsSnapshot>(Sample<AlarmsSnapshot>::text).value());
}

}  // namespace
}  // namespace tessary::snapshot
