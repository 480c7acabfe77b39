// A metric's values, thresholds and statistics as short texts.
#pragma once

#include <optional>
#include <string>

#include "platform/locale/user_locale.h"

namespace tessary::presentation {

/// `value` in `unit`, a name that CloudWatch reports, matched exactly. Numbers are shortened and
/// have a decimal point in every locale: (42.3, "Percent") gives "42.3%", (12345, "Milliseconds")
/// "12.3K ms"; none, "None" and "Count" add nothing, an unknown unit follows as it is. Sizes are
/// the locale's: (1.5, "Megabytes") gives "1.5 MB", (2048, "Bytes/Second") "2 KB/s"; one
/// beyond 64 bits, or no number, is written like an unknown unit ("10.0B Gigabytes").
std::string formatValue(double value, const std::optional<std::string>& unit,
                        const locale::UserLocale& locale);

}  // namespace tessary::presentation
