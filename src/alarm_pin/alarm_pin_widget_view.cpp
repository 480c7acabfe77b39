#include "alarm_pin/alarm_pin_widget_view.h"

#include "pins/pin_presentation.h"
#include "platform/foundation/percent_encoding.h"
#include "platform/locale/localized.h"
#include "presentation/relative.h"
#include "presentation/sparkline.h"
#include "presentation/value_formatting.h"

namespace tessary::alarm_pin {

using namespace views;
using foundation::percentEncoded;
using locale::localized;
using presentation::formatValue;
using presentation::Palette;

namespace {

pins::PinTexts texts() {
    return {
        .heading = localized("CloudWatch alarm"),
        .howToPin = localized("In Tessary, open an alarm and use Add to widget."),
        .chooseTitle = localized("Choose an alarm"),
        .howToChoose = localized("Edit the widget to pick one of your pinned alarms."),
        .removed =
            localized("This alarm was removed in Tessary. Edit the widget to choose another."),
    };
}

View smallLayout(const Pinned& state, Date now) {
    return VStack(
        Alignment::leading, 4,
        {AlarmName{state.pin}, StateBadge{state}, AlarmChart{state}, AlarmFooter{state, now}});
}

View mediumLayout(const Pinned& state, Date now) {
    const std::string& reason = state.pin.reason;
    const View facts =
        VStack(Alignment::leading, 4,
               {AlarmName{state.pin}, StateBadge{state}, Spacer(2), AlarmFooter{state, now}})
            .frame(FixedFrame{.width = 128, .alignment = Alignment::leading});
    const View history = VStack(Alignment::leading, 6,
                                {
                                    AlarmChart{state},
                                    when(!reason.empty(),
                                         [&] {
                                             return Text(reason)
                                                 .font(Font::system(10))
                                                 .foreground(Palette::tertiary)
                                                 .lineLimit(2)
                                                 .fixedSize(false, true);
                                         }),
                                });
    return HStack(Alignment::top, 14, {facts, history});
}

}  // namespace

View AlarmPinWidgetEntryView::body() const {
    return pins::pinWidget<AlarmPinWidgetView>(entry, texts().heading, link());
}

std::optional<std::string> AlarmPinWidgetEntryView::link() const {
    const Pinned* state = entry.display.pinned();
    if (state == nullptr) return "tessary://alarms";
    const AlarmPinsSnapshot::Pin& pin = state->pin;
    return "tessary://alarms/" + percentEncoded(pin.alarmName) +
           "?profile=" + percentEncoded(pin.profile) + "&region=" + percentEncoded(pin.region);
}

View AlarmPinWidgetView::body() const {
    return pins::pinContent(display, texts(), [&](const Pinned& state) {
        return medium ? mediumLayout(state, now) : smallLayout(state, now);
    });
}

View AlarmName::body() const {
    return Text(pin.label)
        .font(Font::system(12, Weight::semibold))
        .foreground(Palette::primary)
        .lineLimit(2)
        .truncation(Truncation::middle);
}

View StateBadge::body() const {
    const Color color = state.muted() ? Palette::tertiary : stateColor(state.pin.state);
    return HStack(Alignment::center, 5,
                  {
                      Circle(color).frame(FixedFrame{.width = 7, .height = 7}),
                      Text(stateText(state.pin.state))
                          .font(Font::system(15, Weight::semibold, FontDesign::rounded))
                          .foreground(color)
                          .accentable()
                          .lineLimit(1)
                          .minimumScale(0.7),
                  });
}

View AlarmChart::body() const {
    const AlarmPinsSnapshot::Pin& pin = state.pin;
    if (pin.points.empty() && !pin.metricName) return Spacer(0);
    const Color current = pin.state == "ALARM" ? Palette::danger : Palette::accent;
    return presentation::Sparkline{pin.points, pin.threshold,
                                   state.muted() ? Palette::tertiary : current};
}

View AlarmFooter::body() const {
    if (state.muted()) return pins::pinProblem(state, now);
    return Text(detail())
        .font(Font::system(11))
        .foreground(Palette::tertiary)
        .lineLimit(1)
        .minimumScale(0.85);
}

std::string AlarmFooter::detail() const {
    const AlarmPinsSnapshot::Pin& pin = state.pin;
    if (pin.latest) {
        const std::string limit =
            pin.threshold ? " / " + formatValue(*pin.threshold, pin.unit) : "";
        return formatValue(pin.latest->v, pin.unit) + limit + " · " + pins::timeOfDay(*pin.latest);
    }
    if (pin.stateUpdatedMs) {
        const Date since = Date::fromMilliseconds(*pin.stateUpdatedMs);
        return localized("Since ") + presentation::relative(since, now);
    }
    return pin.profile + " · " + pin.region;
}

}  // namespace tessary::alarm_pin
