#include "presentation/pin_problem.h"

#include "platform/locale/localized.h"
#include "presentation/palette.h"
#include "presentation/relative.h"
#include "presentation/tight_label.h"

namespace tessary::presentation {

using namespace views;
using locale::localized;

View PinProblem::body(const Environment& environment) const {
    return notice(environment)
        .foreground(Palette::warning)
        .font(Font::system(11, Weight::medium))
        .lineLimit(1)
        .labelStyle(TightLabel{});
}

View PinProblem::notice(const Environment& environment) const {
    if (authExpired)
        return Label(localized("Sign in to ") + profile,
                     "person.crop.circle.badge.exclamationmark");
    if (error) return Label(*error, "exclamationmark.triangle.fill");
    return Text(localized("Last updated ") +
                relative(updated, environment.now, environment.locale));
}

}  // namespace tessary::presentation
