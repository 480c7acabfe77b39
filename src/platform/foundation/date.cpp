#include "platform/foundation/date.h"

#include <algorithm>
#include <chrono>

#include "platform/foundation/numbers.h"

namespace tessary::foundation {
namespace {

bool isDigit(char character) { return character >= '0' && character <= '9'; }

/// Takes a text apart from front to back; once something is missing, it stays failed.
class Cursor {
public:
    explicit Cursor(std::string_view text) : rest_(text) {}

    /// A number of exactly `digits` digits.
    int number(std::size_t digits) {
        int value = 0;
        for (std::size_t taken = 0; taken < digits; ++taken)
            value = value * 10 + (take("0123456789") - '0');
        return value;
    }

    /// The next character, which must be one of `allowed`.
    char take(std::string_view allowed) {
        if (failed_ || rest_.empty() || allowed.find(rest_.front()) == std::string_view::npos) {
            failed_ = true;
            return '0';
        }
        const char taken = rest_.front();
        rest_.remove_prefix(1);
        return taken;
    }

    /// A point and at least one digit, where a point comes next.
    double fraction() {
        if (failed_ || !rest_.starts_with('.')) return 0;
        const auto* const end = std::find_if_not(rest_.begin() + 1, rest_.end(), isDigit);
        const auto length = static_cast<std::size_t>(end - rest_.begin());
        if (length == 1) failed_ = true;
        const auto digits = "0" + std::string{rest_.substr(0, length)};
        rest_.remove_prefix(length);
        return parsed<double>(digits).value_or(0);
    }

    bool isAtEnd() const { return !failed_ && rest_.empty(); }

private:
    std::string_view rest_;
    bool failed_{};
};

std::optional<Date> parseDecimal(std::string_view text) {
    const auto digits = text.substr(text.starts_with('-') ? 1 : 0);
    if (digits.empty() || !isDigit(digits.front()) || !isDigit(digits.back())) return std::nullopt;
    const auto seconds = parsed<double>(text, std::chars_format::fixed);
    return seconds ? std::optional{Date{*seconds}} : std::nullopt;
}

/// Seconds that the zone is ahead of UTC: "Z" or "+05:30".
int parseOffset(Cursor& cursor, bool& valid) {
    const char sign = cursor.take("Zz+-");
    if (sign == 'Z' || sign == 'z') return 0;
    const int hours = cursor.number(2);
    cursor.take(":");
    const int minutes = cursor.number(2);
    valid = valid && hours < 24 && minutes < 60;
    return (sign == '-' ? -60 : 60) * (hours * 60 + minutes);
}

std::optional<Date> parseTimestamp(std::string_view text) {
    Cursor cursor{text};
    const std::chrono::year year{cursor.number(4)};
    cursor.take("-");
    const std::chrono::month month{static_cast<unsigned>(cursor.number(2))};
    cursor.take("-");
    const std::chrono::day day{static_cast<unsigned>(cursor.number(2))};
    cursor.take("Tt ");
    const int hours = cursor.number(2);
    cursor.take(":");
    const int minutes = cursor.number(2);
    cursor.take(":");
    const int seconds = cursor.number(2);
    const double fraction = cursor.fraction();
    const std::chrono::year_month_day calendarDay{year, month, day};
    bool valid = calendarDay.ok() && hours < 24 && minutes < 60 && seconds <= 60;
    const int offset = parseOffset(cursor, valid);
    if (!valid || !cursor.isAtEnd()) return std::nullopt;

    const auto time = std::chrono::sys_days{calendarDay} + std::chrono::hours{hours} +
                      std::chrono::minutes{minutes} + std::chrono::seconds{seconds - offset};
    return Date{static_cast<double>(time.time_since_epoch().count()) + fraction};
}

}  // namespace

std::optional<Date> Date::parse(std::string_view text) {
    if (auto date = parseDecimal(text)) return date;
    return parseTimestamp(text);
}

Date wallClock() {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return {std::chrono::duration<double>(now).count()};
}

}  // namespace tessary::foundation
