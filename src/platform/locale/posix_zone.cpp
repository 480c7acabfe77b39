#include "platform/locale/posix_zone.h"

#include <array>

#include "platform/foundation/numbers.h"

namespace tessary::locale {

namespace {

using Change = POSIXZone::Change;

constexpr int perHour = 3600;  // seconds
constexpr int perDay = 24 * perHour;

/// A rule, read from its front.
class Reader {
public:
    explicit Reader(std::string_view rule) : rest_(rule) {}

    bool isAtEnd() const { return rest_.empty(); }
    bool isAtDates() const { return rest_.empty() || rest_.starts_with(','); }
    bool take(char c) {
        const bool is = rest_.starts_with(c);
        if (is) rest_.remove_prefix(1);
        return is;
    }
    /// Three letters or more, or anything in angle brackets.
    bool takeName() {
        if (take('<')) return !takeAll([](char c) { return c != '>'; }).empty() && take('>');
        const auto isLetter = [](char c) { return (c | 0x20) >= 'a' && (c | 0x20) <= 'z'; };
        return takeAll(isLetter).size() >= 3;
    }
    std::optional<int> number(int least, int most) {
        const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
        const auto value = foundation::parsed<int>(takeAll(isDigit));
        return value && *value >= least && *value <= most ? value : std::nullopt;
    }
    /// Hours, with minutes and seconds behind colons.
    std::optional<int> time() {
        const int sign = take('-') ? -1 : 1;
        if (sign > 0) take('+');
        const auto hours = number(0, 24);
        if (!hours) return std::nullopt;
        int result = *hours * perHour;
        for (int unit = perHour / 60; unit > 0 && take(':'); unit /= 60) {
            const auto count = number(0, 59);
            if (!count) return std::nullopt;
            result += *count * unit;
        }
        return sign * result;
    }
    std::optional<Change> change() {
        auto result = take('J') ? dayOfYear() : weekday();
        if (!result || !take('/')) return result;
        const auto at = time();
        if (!at || *at < 0 || *at > perDay) return std::nullopt;
        result->time = *at;
        return result;
    }

private:
    template <class Belongs>
    std::string_view takeAll(Belongs belongs) {
        std::size_t length = 0;
        while (length < rest_.size() && belongs(rest_[length])) ++length;
        const auto taken = rest_.substr(0, length);
        rest_.remove_prefix(length);
        return taken;
    }
    std::optional<Change> weekday() {
        const auto month = take('M') ? number(1, 12) : std::nullopt;
        if (!month || !take('.')) return std::nullopt;
        const auto week = number(1, 5);
        if (!week || !take('.')) return std::nullopt;
        const auto weekday = number(0, 6);
        if (!weekday) return std::nullopt;
        constexpr int last = 5;
        return Change{*month - 1, *week == last ? -1 : *week, *weekday + 1};
    }
    /// From 1, and never the 29th of February.
    std::optional<Change> dayOfYear() {
        constexpr std::array lengths{31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
        auto left = number(1, 365);
        if (!left) return std::nullopt;
        int month = 0;
        for (const int length : lengths) {
            if (*left <= length) break;
            *left -= length;
            ++month;
        }
        return Change{month, *left};
    }

    std::string_view rest_;
};

/// What holds where a rule has no dates: the United States', as in the C library.
constexpr std::string_view usualDates = ",M3.2.0,M11.1.0";

}  // namespace

std::optional<POSIXZone> parsePOSIXZone(std::string_view rule) {
    Reader read{rule};
    const auto behind = read.takeName() ? read.time() : std::nullopt;
    if (!behind) return std::nullopt;
    POSIXZone zone{-*behind};
    if (read.isAtEnd()) return zone;

    if (!read.takeName()) return std::nullopt;
    const auto summerBehind = read.isAtDates() ? *behind - perHour : read.time();
    if (read.isAtEnd()) read = Reader{usualDates};
    const auto start = read.take(',') ? read.change() : std::nullopt;
    const auto end = read.take(',') ? read.change() : std::nullopt;
    if (!summerBehind || !start || !end || !read.isAtEnd()) return std::nullopt;
    zone.summer = {-*summerBehind, *start, *end};
    return zone;
}

}  // namespace tessary::locale
