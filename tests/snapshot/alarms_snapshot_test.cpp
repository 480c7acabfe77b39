#include "snapshot/alarms_snapshot.h"

#include <algorithm>
#include <array>
#include <gtest/gtest.h>

#include "support/container.h"

namespace tessary::snapshot {
namespace {

using foundation::decodeJSON;

/// Keys and their values, in JSON; a member without a value is left out.
using Members = std::vector<std::pair<std::string, std::string>>;

std::string object(const Members& members) {
    std::string text;
    for (const auto& [key, value] : members)
        if (!value.empty()) text += (text.empty() ? "\"" : ",\"") + key + "\":" + value;
    return "{" + text + "}";
}

/// A document taken apart into its own members, those of its target and those of its alarm.
struct Document {
    std::array<Members, 3> records{Members{{"schemaVersion", "1"},
                                           {"state", R"("watching")"},
                                           {"updatedMs", "1"},
                                           {"intervalSeconds", "1"},
                                           {"firing", "1"},
                                           {"targets", "[T]"},
                                           {"topAlarms", "[A]"}},
                                   Members{{"profile", R"("p")"},
                                           {"region", R"("r")"},
                                           {"firing", "1"},
                                           {"authExpired", "true"},
                                           {"failed", "true"}},
                                   Members{{"name", R"("n")"},
                                           {"profile", R"("p")"},
                                           {"region", R"("r")"},
                                           {"updatedMs", "1"},
                                           {"reason", R"("w")"}}};

    std::string text() const {
        Members top = records[0];
        for (auto& [key, value] : top) {
            if (value == "[T]") value = "[" + object(records[1]) + "]";
            if (value == "[A]")
                value = "[" +
                        object({{"name", R"("x")"},
                                {"profile", R"("p")"},
                                {"region", R"("r")"},
                                {"reason", R"("w")"}}) +
                        "," + object(records[2]) + "]";
        }
        return object(top);
    }
};

TEST(AlarmsSnapshot, DecodesTheExample) {
    const AlarmsSnapshot expected{
        .schemaVersion = 1,
        .state = "watching",
        .updatedMs = 1731772800000,
        .intervalSeconds = 60,
        .firing = 4,
        .targets = {{"prod", "us-east-1", 2, false, false},
                    {"prod", "eu-west-1", 1, false, true},
                    {"shared", "us-east-1", 1, true, false}},
        .topAlarms = {
            {"api-5xx-rate-high", "prod", "us-east-1", 1731772740000, "Threshold Crossed"},
            {"orders-queue-age", "prod", "eu-west-1", {}, "Threshold Crossed"},
            {"ingest-lambda-errors", "shared", "us-east-1", {}, ""}}};
    EXPECT_EQ(decodeJSON<AlarmsSnapshot>(exampleAlarms).value(), expected);
}

TEST(AlarmsSnapshot, NeedsEveryMemberInItsType) {
    ASSERT_TRUE(decodeJSON<AlarmsSnapshot>(Document{}.text()));
    // Each value, "" for none, with what the values begin with that it may take the place of.
    const std::vector<std::pair<std::string, char>> values{
        {"true", 't'},   {R"("x")", '"'},
        {"-7", '1'},     {"7.0", '1'},
        {"[]", '['},     {"", '-'},
        {"null", '-'},   {"0", '1'},
        {R"("1")", '"'}, {"[7]", '-'},
        {"7.5", '-'},    {"{}", '-'},
        {"1e19", '-'},   {"9223372036854775808", '-'}};
    for (std::size_t record = 0; record < 3; ++record) {
        for (std::size_t i = 0; i < Document{}.records[record].size(); ++i) {
            for (const auto& [value, start] : values) {
                Document document;
                auto& [key, former] = document.records[record][i];
                const bool mayBeAbsent = record == 2 && key == "updatedMs";
                const bool absent = value.empty() || value == "null";
                const bool accepted = former.front() == start || (mayBeAbsent && absent);
                former = value;
                const auto text = document.text();
                EXPECT_EQ(static_cast<bool>(decodeJSON<AlarmsSnapshot>(text)), accepted) << text;
            }
        }
    }
}

TEST(AlarmsSnapshot, TakesItsKeysInAnyOrderAmongOthersAndTheFirstOfTwo) {
    const auto plain = decodeJSON<AlarmsSnapshot>(Document{}.text()).value();
    Document mixed;
    for (Members& members : mixed.records) {
        std::reverse(members.begin(), members.end());
        const Members again = members;
        members.insert(members.begin(), {"Firing", R"({"a": [null, 1e400]})"});
        for (const auto& [key, value] : again) members.emplace_back(key, R"(["second"])");
    }
    EXPECT_EQ(decodeJSON<AlarmsSnapshot>(mixed.text()).value(), plain);

    for (const char* text : {"", "[]", "7", "null", R"("watching")", "{}"})
        EXPECT_FALSE(decodeJSON<AlarmsSnapshot>(text)) << text;
}

TEST(AlarmsSnapshot, TellsAlarmsApartByProfileRegionAndName) {
    using namespace std::string_literals;
    EXPECT_EQ((Alarm{"n", "p", "r", 1, "w"}).identity(), "p\0r\0n"s);
    EXPECT_EQ((Alarm{"", "", "", {}, ""}).identity(), "\0\0"s);
}

}  // namespace
}  // namespace tessary::snapshot
