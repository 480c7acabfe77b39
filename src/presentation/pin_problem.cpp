#include "presentation/pin_problem.h"

#include "platform/locale/localized.h"
#include "presentation/palette.h"
#include "presentation/relative.h"
#include "presentation/tight_label.h"

namespace tessary::presentation {

using namespace views;
using locale::embedded;
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
    const std::string age = relative(updated, environment.now, environment.locale);
    return Text(localized("Last updated ") + embedded(age), {age}).minimumScale(0.85);
}

}  // namespace tessary::presentation
