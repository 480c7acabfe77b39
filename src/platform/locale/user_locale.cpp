#include "platform/locale/user_locale.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <system_error>
#include <unicode/calendar.h>
#include <unicode/datefmt.h>
#include <unicode/dcfmtsym.h>
#include <unicode/locid.h>
#include <unicode/measunit.h>
#include <unicode/numberformatter.h>
#include <unicode/reldatefmt.h>
#include <unicode/simpletz.h>
#include <unicode/timezone.h>
#include <unicode/unistr.h>

#include "platform/locale/posix_zone.h"

namespace tessary::locale {
namespace {

constexpr double minute = 60;
constexpr double hour = 60 * minute;
constexpr double day = 24 * hour;
constexpr double averageYear = 365.2425 * day;

/// Below this no calendar day lies between two dates, not even where the clocks went forward.
constexpr double shortestDay = 23 * hour;

/// The years 1 to 9999, in which every calendar answers, and fast.
constexpr Date firstCalendarDate{-62135596800};
constexpr Date lastCalendarDate{253402300799};

/// What a clock time is looked up for at most, in seconds either side of 1970.
constexpr double furthestClockTime = 9e12;

std::string utf8(const icu::UnicodeString& text) {
    std::string bytes;
    text.toUTF8String(bytes);
    return bytes;
}

icu::UnicodeString utf16(std::string_view text) {
    return icu::UnicodeString::fromUTF8({text.data(), static_cast<std::int32_t>(text.size())});
}

UDate milliseconds(Date date) { return date.seconds * 1000; }

std::string idOf(const icu::TimeZone& zone) {
    icu::UnicodeString id;
    return utf8(zone.getID(id));
}

/// The zone of a rule; null where it is none.
std::unique_ptr<icu::TimeZone> ruledZone(std::string_view rule) {
    const auto parsed = parsePOSIXZone(rule);
    if (!parsed) return nullptr;
    constexpr int unit = 1000;
    const int ahead = parsed->ahead * unit;
    if (!parsed->summer) return std::make_unique<icu::SimpleTimeZone>(ahead, utf16(rule));
    const auto& [summerAhead, start, end] = *parsed->summer;
    const auto small = [](int value) { return static_cast<std::int8_t>(value); };
    UErrorCode status = U_ZERO_ERROR;
    auto zone = std::make_unique<icu::SimpleTimeZone>(
        ahead, utf16(rule), small(start.month), small(start.week), small(start.weekday),
        start.time * unit, small(end.month), small(end.week), small(end.weekday), end.time * unit,
        summerAhead * unit - ahead, status);
    return U_SUCCESS(status) ? std::move(zone) : nullptr;
}

std::unique_ptr<icu::TimeZone> openZone(std::string_view name) {
    std::unique_ptr<icu::TimeZone> zone{icu::TimeZone::createTimeZone(utf16(name))};
    if (*zone != icu::TimeZone::getUnknown()) return zone;
    auto ruled = ruledZone(name);
    return ruled ? std::move(ruled) : std::move(zone);
}

std::string environment(const char* variable) {
    const char* const value = std::getenv(variable);
    return value == nullptr ? std::string{} : std::string{value};
}

std::string localeFromEnvironment(const char* category) {
    for (const char* const variable : {"LC_ALL", category, "LANG"}) {
        const auto name = environment(variable);
        if (!name.empty()) return UserLocale::parseIdentifier(name).value_or("en_US");
    }
    return "en_US";
}

/// TZ as POSIX writes it: a name, a name after a colon, or a file that is one or links to one.
std::string zoneName(std::string variable) {
    constexpr std::string_view database = "/zoneinfo/";
    if (variable.starts_with(':')) variable.erase(0, 1);
    if (!variable.starts_with('/')) return variable;
    std::error_code missing;
    const auto file = std::filesystem::canonical(variable, missing).string();
    const auto folder = file.find(database);
    return folder == std::string::npos ? std::string{} : file.substr(folder + database.size());
}

std::string systemZone() {
    const std::unique_ptr<icu::TimeZone> zone{icu::TimeZone::detectHostTimeZone()};
    return zone ? UserLocale::parseTimeZone(idOf(*zone)).value_or("UTC") : "UTC";
}

std::string offsetText(int seconds) {
    const int size = std::abs(seconds);
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "%c%02d:%02d:%02d", seconds < 0 ? '-' : '+',
                  size / 3600, size / 60 % 60, size % 60);
    return {text.data(), size % 60 == 0 ? std::size_t{6} : std::size_t{9}};
}

bool isInDatabase(std::string_view name) {
    icu::UnicodeString canonical;
    UBool isInDatabase = false;
    UErrorCode status = U_ZERO_ERROR;
    icu::TimeZone::getCanonicalID(utf16(name), canonical, isInDatabase, status);
    return U_SUCCESS(status) && isInDatabase;
}

/// As the C library understands TZ, to which "GMT+5" lies west of Greenwich.
std::optional<std::string> zoneNamedAsInPOSIX(const std::string& name) {
    if (name.empty() || isInDatabase(name))
        return UserLocale::parseTimeZone(name.empty() ? "UTC" : name);
    const auto ruled = parsePOSIXZone(name);
    if (!ruled) return std::nullopt;
    return ruled->summer ? name : "GMT" + offsetText(ruled->ahead);
}

std::string zoneFromEnvironment() {
    if (std::getenv("TZ") == nullptr) return systemZone();
    return zoneNamedAsInPOSIX(zoneName(environment("TZ"))).value_or("UTC");
}

/// Cuts ".UTF-8" and "@euro" off; the modifiers that name a script are told apart.
std::string languageTag(std::string_view name) {
    const auto modifier = name.substr(std::min(name.find('@'), name.size()));
    std::string tag{name.substr(0, name.find_first_of(".@"))};
    std::ranges::replace(tag, '_', '-');
    const auto script = modifier == "@latin" ? "-Latn" : modifier == "@cyrillic" ? "-Cyrl" : "";
    return tag.insert(std::min(tag.find('-'), tag.size()), script);
}

/// How long ago, in the largest unit that is not zero.
struct Elapsed {
    double count{};
    UDateRelativeUnit unit{UDAT_RELATIVE_MINUTES};
};

Elapsed elapsedByClock(double seconds) {
    if (seconds >= hour) return {std::floor(seconds / hour), UDAT_RELATIVE_HOURS};
    return {std::floor(std::max(seconds, 0.0) / minute), UDAT_RELATIVE_MINUTES};
}

Elapsed elapsedByCalendar(icu::Calendar& calendar, Date date, Date reference) {
    UErrorCode status = U_ZERO_ERROR;
    calendar.setTime(milliseconds(date), status);
    // Each step moves the calendar on by what it counted.
    const auto count = [&](UCalendarDateFields field) {
        return calendar.fieldDifference(milliseconds(reference), field, status);
    };
    if (const auto years = count(UCAL_YEAR); years > 0) return {double(years), UDAT_RELATIVE_YEARS};
    if (const auto months = count(UCAL_MONTH); months > 0)
        return {double(months), UDAT_RELATIVE_MONTHS};
    const auto days = count(UCAL_DATE);
    if (const auto weeks = days / 7; weeks > 0) return {double(weeks), UDAT_RELATIVE_WEEKS};
    if (days > 0) return {double(days), UDAT_RELATIVE_DAYS};
    return elapsedByClock(reference - date);
}

bool isInCalendar(Date date) { return date >= firstCalendarDate && date <= lastCalendarDate; }

/// The date or the nearest one with which no difference overflows.
Date finite(Date date) { return {std::clamp(date.seconds, -1e300, 1e300)}; }

Elapsed elapsed(const UserLocale& locale, Date date, Date reference) {
    const double seconds = finite(reference) - finite(date);
    if (std::isnan(seconds)) return {};
    if (seconds < shortestDay) return elapsedByClock(seconds);
    if (!isInCalendar(date) || !isInCalendar(reference)) {
        const double years = std::floor(seconds / averageYear);
        if (years >= 1) return {years, UDAT_RELATIVE_YEARS};
        date = {-seconds};
        reference = {0};
    }
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::Calendar> calendar{icu::Calendar::createInstance(
        openZone(locale.timeZone).release(), icu::Locale{locale.identifier.c_str()}, status)};
    if (!calendar) return elapsedByClock(seconds);
    return elapsedByCalendar(*calendar, date, reference);
}

Date known(Date date) { return std::isnan(date.seconds) ? Date{} : date; }

/// Seconds that the zone is ahead of UTC at a date.
int offsetAt(const std::string& zone, Date date) {
    std::int32_t standard = 0;
    std::int32_t saving = 0;
    UErrorCode status = U_ZERO_ERROR;
    openZone(zone)->getOffset(milliseconds(date), 0, standard, saving, status);
    return (standard + saving) / 1000;
}

struct ByteUnit {
    const char* name{};
    int power{};          ///< of ten
    int decimals{};       ///< at most
    std::uint64_t end{};  ///< the first count that is, or rounds to, 1000 of the unit
};

constexpr std::array<ByteUnit, 7> byteUnits{{{"byte", 0, 0, 1'000},
                                             {"kilobyte", 3, 0, 999'500},
                                             {"megabyte", 6, 1, 999'950'000},
                                             {"gigabyte", 9, 2, 999'995'000'000},
                                             {"terabyte", 12, 2, 999'995'000'000'000},
                                             {"petabyte", 15, 2, 999'995'000'000'000'000},
                                             {"exabyte", 18, 2, UINT64_MAX}}};
constexpr const ByteUnit& kilobyte = byteUnits[1];
constexpr const ByteUnit& exabyte = byteUnits[6];

const ByteUnit& byteUnitFor(std::int64_t bytes) {
    const auto count = static_cast<std::uint64_t>(bytes);
    const auto size = bytes < 0 ? 0 - count : count;
    return *std::ranges::find_if(byteUnits, [&](const ByteUnit& unit) { return size < unit.end; });
}

/// Whose words a unit is told in, and whose digits its number.
struct Tongue {
    icu::Locale words{};
    icu::Locale numbers{};
};

/// The count in the unit, under that name: bytes are spelt out, the larger ones abbreviated.
icu::UnicodeString measured(const Tongue& tongue, std::int64_t bytes, const ByteUnit& unit,
                            const char* name) {
    namespace number = icu::number;
    UErrorCode status = U_ZERO_ERROR;
    // As decimal text the quotient stays exact until it is rounded.
    const auto quotient = std::to_string(bytes) + "E-" + std::to_string(unit.power);
    return number::NumberFormatter::withLocale(tongue.words)
        .symbols(icu::DecimalFormatSymbols{tongue.numbers, status})
        .unit(icu::MeasureUnit::forIdentifier(name, status))
        .unitWidth(unit.power == 0 ? UNUM_UNIT_WIDTH_FULL_NAME : UNUM_UNIT_WIDTH_SHORT)
        .precision(number::Precision::maxFraction(unit.decimals))
        .roundingMode(UNUM_ROUND_HALFEVEN)
        .formatDecimal(quotient, status)
        .toString(status);
}

/// The locale data names no exabyte and would compose one ("Ebyte") of the prefix and the short
/// name of the byte. Where the petabyte has a P ("PB", "Po", "Pt"), an E in its place reads better;
/// the other scripts' compositions ("ЭБ") are fine.
icu::UnicodeString measuredInExabytes(const Tongue& tongue, std::int64_t bytes) {
    auto text = measured(tongue, bytes, exabyte, "petabyte");
    const auto prefix = text.indexOf(u'P');
    if (prefix < 0) return measured(tongue, bytes, exabyte, exabyte.name);
    return text.replace(prefix, 1, u'E');
}

}  // namespace

UserLocale UserLocale::fromEnvironment() {
    return {localeFromEnvironment("LC_MESSAGES"), zoneFromEnvironment(),
            localeFromEnvironment("LC_TIME"), localeFromEnvironment("LC_NUMERIC")};
}

std::optional<std::string> UserLocale::unknownTimeZone() {
    const auto zone = environment("TZ");
    return zoneNamedAsInPOSIX(zoneName(zone)) ? std::nullopt : std::optional{zone};
}

std::optional<std::string> UserLocale::parseIdentifier(std::string_view name) {
    const auto tag = languageTag(name);
    if (tag == "C" || tag == "POSIX") return "en_US_POSIX";
    UErrorCode status = U_ZERO_ERROR;
    const auto locale = icu::Locale::forLanguageTag(tag, status);
    const bool isKnown = U_SUCCESS(status) && locale.getISO3Language()[0] != '\0';
    if (!isKnown) return std::nullopt;
    return locale.getName();
}

std::optional<std::string> UserLocale::parseTimeZone(std::string_view name) {
    auto id = idOf(*openZone(name));
    if (id == UCAL_UNKNOWN_ZONE_ID) return std::nullopt;
    return id;
}

std::string UserLocale::integer(std::int64_t value) const {
    UErrorCode status = U_ZERO_ERROR;
    return utf8(icu::number::NumberFormatter::withLocale(icu::Locale{digitsLocale().c_str()})
                    .formatInt(value, status)
                    .toString(status));
}

std::string UserLocale::byteCount(std::int64_t bytes) const {
    const Tongue tongue{identifier.c_str(), digitsLocale().c_str()};
    const bool isEnglish = std::string_view{tongue.words.getLanguage()} == "en";
    if (bytes == 0 && isEnglish) return "Zero KB";
    const auto& unit = bytes == 0 ? kilobyte : byteUnitFor(bytes);
    if (&unit == &exabyte) return utf8(measuredInExabytes(tongue, bytes));
    auto text = measured(tongue, bytes, unit, unit.name);
    if (isEnglish) text.findAndReplace(u"kB", u"KB");  // the locale data has the symbol of physics
    return utf8(text);
}

std::string UserLocale::relativeShort(Date date, Date reference) const {
    const auto [count, unit] = elapsed(*this, date, reference);
    UErrorCode status = U_ZERO_ERROR;
    icu::NumberFormat* const ownDigits =
        digitsLocale() == identifier
            ? nullptr
            : icu::NumberFormat::createInstance(icu::Locale{digitsLocale().c_str()}, status);
    const icu::RelativeDateTimeFormatter formatter{icu::Locale{identifier.c_str()}, ownDigits,
                                                   UDAT_STYLE_SHORT, UDISPCTX_CAPITALIZATION_NONE,
                                                   status};
    icu::UnicodeString text;
    return utf8(formatter.format(count, UDAT_DIRECTION_LAST, unit, text, status));
}

std::string UserLocale::timeOfDay(Date date) const {
    const icu::Locale named{(clockLocale.empty() ? identifier : clockLocale).c_str()};
    const bool isPOSIX = std::string_view{named.getVariant()} == "POSIX";
    const std::unique_ptr<icu::DateFormat> format{icu::DateFormat::createTimeInstance(
        icu::DateFormat::kShort, isPOSIX ? icu::Locale::getUK() : named)};
    if (!format) return {};
    format->adoptTimeZone(openZone(timeZone).release());
    const Date shown{std::clamp(known(date).seconds, -furthestClockTime, furthestClockTime)};
    icu::UnicodeString text;
    return utf8(format->format(milliseconds(shown), text));
}

std::string UserLocale::timestamp(Date date) const {
    namespace chrono = std::chrono;
    // A day inside, so that the zone's offset does not lead out of the four-digit years.
    const Date shown = std::clamp(known(date), firstCalendarDate + day, lastCalendarDate - day);
    const int offset = offsetAt(timeZone, shown);
    const auto whole = static_cast<std::int64_t>(std::floor(shown.seconds)) + offset;
    const chrono::sys_seconds local{chrono::seconds{whole}};
    const auto midnight = chrono::floor<chrono::days>(local);
    const chrono::year_month_day calendarDay{midnight};
    const chrono::hh_mm_ss clock{local - midnight};
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02u-%02uT%02d:%02d:%02d",
                  int(calendarDay.year()), unsigned(calendarDay.month()),
                  unsigned(calendarDay.day()), static_cast<int>(clock.hours().count()),
                  static_cast<int>(clock.minutes().count()),
                  static_cast<int>(clock.seconds().count()));
    return text.data() + offsetText(offset);
}

}  // namespace tessary::locale
