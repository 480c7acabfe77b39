#include "presentation/locked_placeholder.h"

#include "platform/locale/localized.h"
#include "presentation/message.h"

namespace tessary::presentation {

using namespace views;
using locale::localized;

namespace {

struct Guarded {
    View content{};
    std::string heading{};
    bool operator==(const Guarded&) const = default;

    View body(const Environment& environment) const {
        if (!environment.redaction.placeholder) return content;
        return View{Message{heading, "lock.fill", localized("Hidden while locked"),
                            localized("Unlock your Mac to see it.")}}
            .colorScheme(ColorScheme::dark)
            .unredacted();
    }
};

}  // namespace

View LockedPlaceholder::body(const View& content) const { return Guarded{content, heading}; }

}  // namespace tessary::presentation
