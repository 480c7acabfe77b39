// How long ago something was, in a few words.
#pragma once

#include <string>

#include "platform/foundation/date.h"

namespace tessary::presentation {

/// `date` as seen from `now`, the date of the entry being rendered: "just now" below one minute and
/// for a date to come, else the user's locale's short phrase ("5 min. ago").
std::string relative(foundation::Date date, foundation::Date now);

}  // namespace tessary::presentation
