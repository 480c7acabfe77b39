// How long ago something was, in a few words.
#pragma once

#include <string>

#include "platform/locale/localized.h"
#include "platform/locale/user_locale.h"

namespace tessary::presentation {

/// `date` as seen from `now`, the date of the entry being rendered: "just now" below one minute and
/// for a date to come, else the locale's short phrase ("5 min. ago").
inline std::string relative(foundation::Date date, foundation::Date now,
                            const locale::UserLocale& locale) {
    const bool atLeastAMinute = now - date >= 60;  // false for no number, too
    return atLeastAMinute ? locale.relativeShort(date, now) : locale::localized("just now");
}

}  // namespace tessary::presentation
