#include "platform/foundation/user_locale.h"

#include <cmath>
#include <gtest/gtest.h>

#include "platform/foundation/fixtures.h"

namespace tessary::foundation {

constexpr int minute = 60, hour = 3600, day = 86400;
constexpr Date afternoon{1731772840};  // 2024-11-16 16:00:40 UTC

TEST(UserLocale, SpeaksTheUsersLanguage) {
    const std::string rows[][6] = {
        {"en_US", "-1,234,567", "1 min. ago", "1 wk. ago", "2 yr. ago", "5:00\u202FPM"},
        {"de_DE", "-1.234.567", "vor 1 Min.", "vor 1 Woche", "vor 2 Jahren", "17:00"},
        {"fr_FR", "-1\u202F234\u202F567", "il y a 1\u00A0min", "il y a 1 sem.", "il y a 2 a",
         "17:00"},
        {"ja_JP", "-1,234,567", "1 分前", "1 週間前", "2 年前", "17:00"},
        {"ar_EG", "\u061C-١٬٢٣٤٬٥٦٧", "قبل دقيقة واحدة", "قبل أسبوع واحد", "قبل سنتين", "٥:٠٠ م"}};
    for (const auto& [identifier, integer, aMinute, aWeek, years, time] : rows) {
        const UserLocale locale{identifier, "Europe/Berlin"};
        EXPECT_EQ(locale.integer(-1234567), integer);
        EXPECT_EQ(locale.relativeShort(afternoon - 119, afternoon), aMinute);
        EXPECT_EQ(locale.relativeShort(afternoon - 7 * day, afternoon), aWeek);
        EXPECT_EQ(locale.relativeShort(afternoon - 1095 * day, afternoon), years);
        EXPECT_EQ(locale.timeOfDay(afternoon), time);
    }
}

TEST(UserLocale, CountsTheLargestUnitThatIsNotZero) {
    const UserLocale locale{"en_US", "Europe/Berlin"};
    // From, to, and the text without its blanks; last a day of 23 hours, one of 24 and one of 25.
    for (const auto& [dates, expected] : pairs(R"(
        0/59.9=0min.ago 0/60=1min.ago 60/0=0min.ago 0/3599.9=59min.ago 0/7199=1hr.ago
        0/777599=1wk.ago 2024-02-28T12:00:00Z/2024-03-28T12:00:00Z=1mo.ago
        2023-11-16T16:00:40Z/2024-11-16T16:00:39Z=11mo.ago
        2023-11-16T16:00:40Z/2024-11-16T16:00:40Z=1yr.ago
        2024-03-30T11:00:00Z/2024-03-31T09:59:59Z=22hr.ago
        2024-03-30T11:00:00Z/2024-03-31T10:00:00Z=1dayago
        2024-06-30T11:00:00Z/2024-07-01T10:59:59Z=23hr.ago
        2024-10-26T10:00:00Z/2024-10-27T10:59:59Z=24hr.ago
        2024-10-26T10:00:00Z/2024-10-27T11:00:00Z=1dayago)")) {
        const auto from = Date::parse(dates.substr(0, dates.find('/')));
        auto text = locale.relativeShort(*from, *Date::parse(dates.substr(dates.find('/') + 1)));
        std::erase(text, ' ');
        EXPECT_EQ(text, expected) << dates;
    }
}

TEST(UserLocale, NeverCountsDownAsTimePasses) {
    const UserLocale locale{"en_US", "America/New_York"};
    const std::string units = " min  hr.  day  wk.  mo.  yr. ";
    std::pair<std::size_t, int> before{};
    for (int elapsed = 0; elapsed < 400 * day; elapsed += elapsed < 3 * hour ? 59 : 25013) {
        const auto text = locale.relativeShort(afternoon - elapsed, afternoon);
        std::size_t end = 0;
        const int count = std::stoi(text, &end);
        const auto unit = units.find(text.substr(end, 4));
        ASSERT_NE(unit, std::string::npos) << text;
        ASSERT_TRUE(count > 0 || elapsed < minute) << text;
        ASSERT_GE(std::pair(unit, count), before) << text << " after " << elapsed;
        before = {unit, count};
    }
    EXPECT_EQ(before.first, units.find(" yr."));
}

TEST(UserLocale, AnswersForEveryDate) {
    const Date dates[] = {{0},       {1e10},  {-62135596800}, {253402300800}, {9.2e15},
                          {-9.2e15}, {1e308}, {-INFINITY},    {INFINITY},     {NAN}};
    for (const char* identifier : {"en_US", "ar_SA", "th_TH", "zh@calendar=chinese", "nonsense"}) {
        const UserLocale locale{identifier, "Europe/Berlin"};
        for (const auto date : dates) {
            EXPECT_FALSE(locale.timeOfDay(date).empty());
            EXPECT_TRUE(Date::parse(locale.timestamp(date).substr(0, 19) + "Z"));
            for (const auto other : dates) EXPECT_FALSE(locale.relativeShort(date, other).empty());
        }
    }
    const UserLocale us{};
    EXPECT_EQ(us.relativeShort({0}, {NAN}), "0 min. ago");
    EXPECT_EQ(us.relativeShort({253402300800}, {253402300800 + 8.0 * day}), "1 wk. ago");
    EXPECT_EQ(us.relativeShort({-9.2e15}, {0}), "291,536,394 yr. ago");
    EXPECT_EQ(us.timeOfDay({1e308}), us.timeOfDay({9e12}));
}

TEST(UserLocale, WritesTimestampsThatReadBack) {
    for (const auto& [zone, text] : pairs(R"(
        Europe/Berlin=2024-11-16T17:00:40+01:00 America/St_Johns=2024-11-16T12:30:40-03:30
        GMT+05:30=2024-11-16T21:30:40+05:30 Mars/Olympus=2024-11-16T16:00:40+00:00)"))
        EXPECT_EQ((UserLocale{"ar_EG", zone}.timestamp(afternoon)), text);
    const UserLocale berlin{"", "Europe/Berlin"};
    EXPECT_EQ(berlin.timestamp({-5e9}), "1811-07-23T16:00:08+00:53:28");
    for (std::int64_t time = -2'400'000'000; time < 250'000'000'000; time += 1'234'567'891)
        EXPECT_EQ(Date::parse(berlin.timestamp({double(time)})), Date{double(time)});
    EXPECT_EQ(UserLocale{}.timestamp({-0.5}), "1969-12-31T23:59:59+00:00");
}

TEST(UserLocale, ParsesNamesOfLocalesAndZones) {
    for (const auto& [name, identifier] : pairs(R"(=- xx_YY=- deutsch=- en--US=- und=- root=- 12=-
        de_DE_=- @=- .UTF-8=- de_DE.UTF-8=de_DE zh-Hant-TW=zh_Hant_TW C=en_US C.UTF-8=en_US fr=fr
        POSIX=en_US en_us=en_US de_DE@euro=de_DE sr_RS.UTF-8@latin=sr_Latn_RS)"))
        EXPECT_EQ(UserLocale::parseIdentifier(name).value_or("-"), identifier) << name;
    for (const auto& [name, zone] : pairs(R"(=- Mars/Olympus=- GMT+25=- Etc/Unknown=- CET-1CEST=-
        europe/berlin=- Europe/Berlin=Europe/Berlin UTC=UTC GMT+5:30=GMT+05:30 GMT-3=GMT-03:00)"))
        EXPECT_EQ(UserLocale::parseTimeZone(name).value_or("-"), zone) << name;
    EXPECT_FALSE(UserLocale::parseIdentifier({"de\0DE", 5}));
    EXPECT_FALSE(UserLocale::parseTimeZone({"UTC\0x", 5}));
}

TEST(UserLocale, ComesFromTheEnvironment) {
    const std::string rows[][6] = {
        {"de_DE.UTF-8", "fr_FR", "ja_JP", "Europe/Paris", "de_DE", "Europe/Paris"},
        {"", "fr_FR", "ja_JP", ":Europe/Paris", "fr_FR", "Europe/Paris"},
        {"-", "-", "ja_JP", ":/usr/share/zoneinfo/Asia/Tokyo", "ja_JP", "Asia/Tokyo"},
        {"-", "-", "-", "", "en_US", "UTC"},
        {"C", "fr_FR", "-", "CET-1CEST", "en_US", "UTC"},
        {"xx_YY", "fr_FR", "-", "/etc/passwd", "en_US", "UTC"}};
    const char* const variables[] = {"LC_ALL", "LC_TIME", "LANG", "TZ"};
    for (const auto& row : rows) {
        for (std::size_t each = 0; each < 4; ++each) setVariable(variables[each], row[each]);
        EXPECT_EQ(UserLocale::fromEnvironment(), (UserLocale{row[4], row[5]}));
    }
    setVariable("TZ", "-");
    EXPECT_TRUE(UserLocale::parseTimeZone(UserLocale::fromEnvironment().timeZone));
}

}  // namespace tessary::foundation
