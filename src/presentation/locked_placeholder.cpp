#include "presentation/locked_placeholder.h"

#include <utility>

#include "platform/locale/localized.h"
#include "presentation/pin_message.h"

namespace tessary::presentation {

using namespace views;
using locale::localized;

namespace {

struct Guarded {
    View content{};
    std::string heading{};
    bool operator==(const Guarded&) const = default;

    View shown(const RedactionReasons& redaction) const {
        if (!redaction.placeholder) return content;
        return View{PinMessage{heading, "lock.fill", localized("Hidden while locked"),
                               localized("Unlock your Mac to see it.")}}
            .colorScheme(ColorScheme::dark)
            .unredacted();
    }
};

}  // namespace

View LockedPlaceholder::body(const View& content) const {
    return EnvironmentReader(Guarded{content, heading},
                             [](const Guarded& guarded, const Environment& environment) {
                                 return guarded.shown(environment.redaction);
                             });
}

}  // namespace tessary::presentation
