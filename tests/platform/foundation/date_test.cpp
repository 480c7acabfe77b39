#include "platform/foundation/date.h"

#include <gtest/gtest.h>

#include "platform/foundation/fixtures.h"

namespace tessary::foundation {

TEST(Date, ParsesSecondsAndTimestamps) {
    for (const auto& [text, seconds] : pairs(R"(
        1731772840.5=1731772840.5 -3=-3 007=7 -0.25=-0.25 1970-01-01T00:00:00Z=0
        2024-11-16T16:00:40.5Z=1731772840.5 2024-11-16t17:00:40+01:00=1731772840
        2024-11-16T10:30:40-05:30=1731772840 2024-02-29T00:00:00Z=1709164800
        2016-12-31T23:59:60z=1483228800 2016-12-31T23:59:60.5Z=1483228800.5
        0000-01-01T00:00:00Z=-62167219200 9999-12-31T23:59:59-00:00=253402300799)"))
        EXPECT_EQ(Date::parse(text), Date{std::stod(seconds)}) << text;
    EXPECT_EQ(Date::parse("1970-01-01 00:00:01Z"), Date{1});
    auto refused = words(R"(- .5 5. +5 1e3 0x10 inf nan 2023-02-29T00:00:00Z 2024-13-01T00:00:00Z
        2024-11-16T24:00:00Z 2024-11-16T23:60:00Z 2024-11-16T23:00:61Z 2024-11-16T16:00:40
        2024-11-16T16:00:40.Z 2024-11-16T16:00Z 2024-11-16 2024-11-16T16:00:40+24:00
        2024-11-16T16:00:40+01:60 2024-11-16T16:00:40+0100 2024-11-16T16:00:40Zx
        -2024-11-16T16:00:40Z)");
    refused.insert(refused.end(), {"", " 1", "1 ", std::string(400, '9')});
    for (const auto& text : refused) EXPECT_FALSE(Date::parse(text)) << text;
}

}  // namespace tessary::foundation
