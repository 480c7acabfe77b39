#include "alarm_pin/alarm_pin_widget_view.h"

#include "alarm_pin/alarm_pin.h"
#include "pins/pin_widget.h"
#include "platform/locale/localized.h"
#include "presentation/relative.h"
#include "presentation/spacing.h"
#include "presentation/sparkline.h"
#include "presentation/value_formatting.h"

namespace tessary::alarm_pin {

using namespace views;
using locale::embedded;
using locale::localized;
using presentation::formatValue;
using presentation::Palette;
using presentation::Spacing;
using Pin = AlarmPinsSnapshot::Pin;

namespace {

/// The alarm's label, in two lines at most.
View name(const Pin& pin) {
    return Text(pin.label)
        .font(Font::system(12, Weight::semibold))
        .foreground(Palette::primary)
        .lineLimit(2)
        .truncation(Truncation::middle);
}

/// The metric's recent samples against the threshold; empty room where there is no metric.
View chart(const Pinned& state) {
    const Pin& pin = state.pin;
    if (pin.points.empty() && !pin.metricName) return Spacer(0);
    const Color current = pin.state == "ALARM" ? Palette::danger : Palette::accent;
    return presentation::Sparkline{pin.points, pin.threshold,
                                   state.muted() ? Palette::tertiary : current};
}

/// The latest value, or what is the matter.
View footer(const Pinned& state) {
    if (state.muted()) return pins::pinProblem(state);
    const Pin& pin = state.pin;
    const auto since = pin.stateUpdatedMs
                           ? std::optional{Date::fromMilliseconds(*pin.stateUpdatedMs)}
                           : std::nullopt;
    return LatestSample{pin.latest, pin.threshold, pin.unit, since, AlarmPin::detail(pin)};
}

View reason(const Pin& pin) {
    return when(!pin.reason.empty(), [&] {
        return Text(pin.reason)
            .font(Font::system(10))
            .foreground(Palette::tertiary)
            .lineLimit(2)
            .fixedSize(false, true);
    });
}

}  // namespace

View AlarmPin::layout(const Pinned& state, WidgetFamily family) {
    const StateBadge badge{state.pin.state, state.muted()};
    if (family == WidgetFamily::systemSmall)
        return VStack(Alignment::leading, Spacing::rows,
                      {name(state.pin), badge, chart(state), footer(state)});

    const View facts = VStack(Alignment::leading, Spacing::rows,
                              {name(state.pin), badge, Spacer(2), footer(state)});
    return HStack(
        Alignment::top, Spacing::columns,
        {
            facts.frame(FixedFrame{.width = Spacing::pinColumn, .alignment = Alignment::leading}),
            VStack(Alignment::leading, Spacing::caption, {chart(state), reason(state.pin)}),
        });
}

View StateBadge::body() const {
    const Color color = muted ? Palette::tertiary : stateColor(state);
    return HStack(Alignment::center, 5,
                  {
                      Circle(color).frame(FixedFrame{.width = 7, .height = 7}),
                      Text(stateText(state))
                          .font(Font::system(15, Weight::semibold, FontDesign::rounded))
                          .foreground(color)
                          .accentable()
                          .lineLimit(1)
                          .minimumScale(0.7),
                  });
}

View LatestSample::body(const Environment& environment) const {
    return text(environment)
        .font(Font::system(11))
        .foreground(Palette::tertiary)
        .lineLimit(1)
        .minimumScale(0.85);
}

View LatestSample::text(const Environment& environment) const {
    const locale::UserLocale& locale = environment.locale;
    if (latest) {
        const std::string limit = threshold ? " / " + formatValue(*threshold, unit, locale) : "";
        const std::string value = formatValue(latest->v, unit, locale);
        return Text(value + limit + " · " + embedded(pins::timeOfDay(*latest, locale)),
                    {value + limit, value});
    }
    if (!since) return Text(place);
    const std::string age = presentation::relative(*since, environment.now, locale);
    return Text(localized("Since ") + embedded(age), {age});
}

}  // namespace tessary::alarm_pin
