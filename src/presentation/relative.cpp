#include "presentation/relative.h"

#include "platform/locale/localized.h"

namespace tessary::presentation {

std::string relative(foundation::Date date, foundation::Date now,
                     const locale::UserLocale& locale) {
    const double elapsed = now - date;
    const bool atLeastAMinute = elapsed >= 60;  // false for no number, too
    if (!atLeastAMinute) return locale::localized("just now");
    return locale.relativeShort(date, now);
}

}  // namespace tessary::presentation
