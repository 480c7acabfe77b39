#include "presentation/relative.h"

#include "platform/locale/localized.h"
#include "platform/system/surroundings.h"

namespace tessary::presentation {

std::string relative(foundation::Date date, foundation::Date now) {
    const double elapsed = now - date;
    const bool atLeastAMinute = elapsed >= 60;  // false for no number, too
    if (!atLeastAMinute) return locale::localized("just now");
    return system::surroundings().locale.relativeShort(date, now);
}

}  // namespace tessary::presentation
