// The user's locale and time zone, and the texts that depend on them.
//
// A locale is a plain value (an identifier and a zone); the data behind it is opened when a text
// needs it. No locale has to be generated on the machine.
//
//     const UserLocale us{"en_US", "America/New_York"};
//     us.integer(1234)                                    // "1,234"
//     us.relativeShort(Date{0}, Date{119})                // "1 min. ago"
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/foundation/date.h"

namespace tessary::locale {

using foundation::Date;

/// An identifier or zone that nobody knows gives the texts of no particular language, or of UTC.
struct UserLocale {
    std::string identifier{"en_US"};  ///< ICU form, "de_DE"
    std::string timeZone{"UTC"};      ///< tz database name, "Europe/Berlin", or what stands for one
    std::string clockLocale{};        ///< whose time of day it has; the identifier's where empty
    std::string numberLocale{};       ///< whose digits and separators; the identifier's where empty

    /// The locales that LC_MESSAGES (words), LC_TIME (clock) and LC_NUMERIC (numbers) name, each
    /// under LC_ALL and over LANG, the first of them that is set and not empty; en_US for a name
    /// that no locale has. And the zone of TZ or else of the system. TZ may be a tz database name,
    /// with a colon before it or not, a file of the database or a link to one, or a POSIX rule
    /// ("CET-1CEST"); one that is not understood means UTC.
    static UserLocale fromEnvironment();

    /// A locale name as POSIX or BCP 47 writes it ("de_DE.UTF-8", "zh-Hant-TW", "C") in ICU form;
    /// none when it isn't one or its language is unknown. "C" and "POSIX" are American English with
    /// a clock of 24 hours and without grouping.
    static std::optional<std::string> parseIdentifier(std::string_view name);
    /// A tz database name, "UTC", an offset "GMT+5:30" or a POSIX rule; none when it is unknown.
    static std::optional<std::string> parseTimeZone(std::string_view name);
    /// What TZ holds where that is not understood.
    static std::optional<std::string> unknownTimeZone();

    /// A whole number with the locale's digits, sign and grouping.
    std::string integer(std::int64_t value) const;

    /// A size in decimal units, 1000 a step from bytes to EB, as the locale writes number and unit:
    /// "999 bytes", "2 KB", "1.5 MB", "9.22 EB"; "1,5 Mo" in French. Bytes and KB are whole, MB has
    /// at most one decimal, GB and above two; ties go to the even digit, trailing zeros are
    /// dropped, and what would round up to 1000 takes the next unit. None is "Zero KB" in English
    /// and elsewhere the locale's own zero of that unit.
    std::string byteCount(std::int64_t bytes) const;

    /// `date` as it lies in the past of `reference`, in the locale's short form: the largest unit
    /// of the difference that is not zero (years, months, weeks, days, hours, minutes), truncated,
    /// always with a number. Years to days are the calendar's, in the user's zone. Below one
    /// minute, and for a date after `reference`, zero minutes. Never fails: dates outside the
    /// calendar's range are counted in average years.
    std::string relativeShort(Date date, Date reference) const;

    /// The time of day without a date, in the locale's own short pattern and the user's zone. A
    /// date outside the calendar's range (about 285,000 years either way) gives the nearest one in
    /// it.
    std::string timeOfDay(Date date) const;

    /// Date and time to the second with the zone's offset, ISO 8601: "2024-11-16T17:00:40+01:00";
    /// offsets of long ago may have seconds ("+00:53:28"). A date outside the years 1 to 9999 gives
    /// one at their edge, one that is no number the start of 1970.
    std::string timestamp(Date date) const;

    bool operator==(const UserLocale&) const = default;

private:
    const std::string& digitsLocale() const {
        return numberLocale.empty() ? identifier : numberLocale;
    }
};

}  // namespace tessary::locale
