#include <cmath>
#include <gtest/gtest.h>

#include "platform/locale/localized.h"
#include "platform/locale/text_equality.h"
#include "platform/locale/user_locale.h"
#include "support/golden.h"

namespace tessary::locale {

constexpr int minute = 60, hour = 3600, day = 86400;
constexpr Date afternoon{1731772840};  // 2024-11-16 16:00:40 UTC

/// What a line such as "time de_DE 1731772840" asks for; in Berlin, whose days have 23, 24 or 25
/// hours.
static std::string compared(const std::string& a, const std::string& b) {
    const bool areEqual = canonicallyEqual(a, b);
    EXPECT_EQ(canonicallyEqual(b, a), areEqual) << a << ' ' << b;
    EXPECT_EQ(canonicalForm(a) == canonicalForm(b), areEqual) << a << ' ' << b;
    return areEqual ? "equal" : "different";
}

static std::string answered(const std::string& line) {
    auto asked = words(line);
    asked.resize(4);
    const auto& [what, name, first, second] = std::tie(asked[0], asked[1], asked[2], asked[3]);
    if (what == "embedded") return replaced(embedded(name), name, "X");
    if (what == "compare") return compared(unescaped(name), unescaped(first));
    const UserLocale locale{name, "Europe/Berlin"};
    const auto date = [](const std::string& text) { return Date::parse(text).value(); };
    if (what == "bytes") return UserLocale{name}.byteCount(std::stoll(first));
    if (what == "integer") return locale.integer(std::stoll(first));
    if (what == "relative") return locale.relativeShort(date(first), date(second));
    if (what == "time") return locale.timeOfDay(date(first));
    if (what == "timestamp") return UserLocale{"ar_EG", name}.timestamp(date(first));
    if (what == "zone") return UserLocale::parseTimeZone(name).value_or("none");
    return UserLocale::parseIdentifier(name).value_or("none");
}

TEST(UserLocale, SpeaksTheUsersLanguage) { expectTranscript("answers.txt", answered); }

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

TEST(UserLocale, AnswersForDatesThatNoCalendarHas) {
    const UserLocale us{};
    EXPECT_EQ(us.relativeShort({0}, {NAN}), "0 min. ago");
    EXPECT_EQ(us.relativeShort({-9.2e15}, {0}), "291,536,394 yr. ago");
    EXPECT_EQ(us.timeOfDay({1e308}), us.timeOfDay({9e12}));
    for (const double date : std::vector<double>{-INFINITY, INFINITY, NAN, -9.2e15, 1e308})
        EXPECT_TRUE(Date::parse(us.timestamp({date}).substr(0, 19) + "Z")) << date;
}

TEST(UserLocale, WritesTimestampsThatReadBack) {
    const UserLocale berlin{"", "Europe/Berlin"};
    for (std::int64_t time = -2'400'000'000; time < 250'000'000'000; time += 1'234'567'891)
        EXPECT_EQ(Date::parse(berlin.timestamp({double(time)})), Date{double(time)});
    EXPECT_FALSE(UserLocale::parseIdentifier({"de\0DE", 5}));
    EXPECT_FALSE(UserLocale::parseTimeZone({"UTC\0x", 5}));
}

}  // namespace tessary::locale
