// Points in time and the clock that tells the current one.
#pragma once

#include <compare>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace tessary::foundation {

/// A point in time: seconds since 1970-01-01 00:00 UTC, fractions included.
///
///     Date::fromMilliseconds(1500)                       // Date{1.5}
///     Date{180} - Date{60}                               // 120.0 seconds
///     Date::parse("2024-11-16T16:00:40.5Z")              // Date{1731772840.5}
struct Date {
    double seconds{};

    /// The integer becomes a double before the division by 1000.
    static constexpr Date fromMilliseconds(std::int64_t milliseconds) {
        return {static_cast<double>(milliseconds) / 1000.0};
    }

    /// Seconds since 1970 in decimal ("1731772840.5", "-3") or RFC 3339
    /// ("2024-11-16T17:00:40+01:00", upper- or lower-case letters, a space for the T, leap second
    /// 60 as the next minute's start). None for anything else: an exponent, infinities, a day that
    /// the month lacks, a missing zone.
    static std::optional<Date> parse(std::string_view text);

    constexpr Date operator+(double interval) const { return {seconds + interval}; }
    constexpr Date operator-(double interval) const { return {seconds - interval}; }
    constexpr double operator-(Date other) const { return seconds - other.seconds; }
    auto operator<=>(const Date&) const = default;  // NOLINT(modernize-use-nullptr): 14 misreads it
};

/// Tells the current time; callable from any thread.
using Clock = std::function<Date()>;

/// The machine's own time.
Date wallClock();

}  // namespace tessary::foundation
