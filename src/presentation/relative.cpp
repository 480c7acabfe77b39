#include "presentation/relative.h"

#include "platform/foundation/localized.h"
#include "platform/foundation/surroundings.h"

namespace tessary::presentation {

std::string relative(foundation::Date date, foundation::Date now) {
    const double elapsed = now - date;
    const bool atLeastAMinute = elapsed >= 60;  // false for no number, too
    if (!atLeastAMinute) return foundation::localized("just now");
    return foundation::surroundings().locale.relativeShort(date, now);
}

}  // namespace tessary::presentation
