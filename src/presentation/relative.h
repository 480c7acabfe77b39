// How long ago something was, in a few words.
#pragma once

#include <string>

#include "platform/locale/user_locale.h"

namespace tessary::presentation {

/// `date` as seen from `now`, the date of the entry being rendered: "just now" below one minute and
/// for a date to come, else the locale's short phrase ("5 min. ago").
std::string relative(foundation::Date date, foundation::Date now, const locale::UserLocale& locale);

}  // namespace tessary::presentation
