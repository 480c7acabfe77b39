#include "metric/metric_widget_view.h"

#include "metric/metric_pin.h"
#include "pins/pin_widget.h"
#include "platform/locale/localized.h"
#include "presentation/spacing.h"
#include "presentation/sparkline.h"
#include "presentation/value_formatting.h"

namespace tessary::metric {

using namespace views;
using locale::embedded;
using locale::localized;
using presentation::formatValue;
using presentation::Palette;
using presentation::Spacing;
using Pin = MetricPinsSnapshot::Pin;

namespace {

constexpr const char* noValue = "—";
constexpr double apart = 3;  ///< points, at least, between two statistics

/// A third of a row.
View cell(const View& content) {
    return content.frame(FlexibleFrame::unboundedWidth(Alignment::leading));
}

View chart(const Pinned& state) {
    return presentation::Sparkline{state.pin.points, std::nullopt,
                                   state.muted() ? Palette::tertiary : Palette::accent};
}

/// The metric's label, in one line.
View header(const Pin& pin) {
    return presentation::heading(pin.label).lineLimit(1).truncation(Truncation::middle);
}

MetricValue value(const Pinned& state) { return {state.pin.latest, state.pin.unit, state.muted()}; }

/// When the latest value was, or what is the matter.
View footer(const Pinned& state) {
    if (state.muted()) return pins::pinProblem(state);
    return SampleTime{state.pin.stat, state.pin.latest};
}

/// The left column of the medium size.
View summary(const Pinned& state) {
    const Pin& pin = state.pin;
    return VStack(Alignment::leading, 0,
                  {
                      header(pin),
                      Text(pin.profile + " · " + pin.region)
                          .font(Font::system(10))
                          .foreground(Palette::tertiary)
                          .lineLimit(1)
                          .truncation(Truncation::middle),
                      Spacer(Spacing::number),
                      value(state),
                      Spacer(Spacing::number),
                      footer(state),
                  })
        .frame(FixedFrame{.width = Spacing::pinColumn, .alignment = Alignment::leading});
}

}  // namespace

View MetricPin::layout(const Pinned& state, WidgetFamily family) {
    if (family == WidgetFamily::systemSmall)
        return VStack(Alignment::leading, Spacing::rows,
                      {header(state.pin), value(state), chart(state), footer(state)});
    const View history = VStack(Alignment::leading, Spacing::caption,
                                {chart(state), MetricStats::of(state.pin.points, state.pin.unit)});
    return HStack(Alignment::top, Spacing::columns, {summary(state), history});
}

View MetricValue::body(const Environment& environment) const {
    return Text(latest ? formatValue(latest->v, unit, environment.locale) : noValue)
        .font(Font::system(28, Weight::semibold, FontDesign::rounded))
        .monospacedDigits()
        .foreground(muted ? Palette::tertiary : Palette::primary)
        .accentable()
        .lineLimit(1)
        .minimumScale(0.5);
}

View SampleTime::body(const Environment& environment) const {
    return text(environment.locale)
        .font(Font::system(11))
        .foreground(Palette::tertiary)
        .lineLimit(1);
}

View SampleTime::text(const locale::UserLocale& locale) const {
    if (!latest) return Text(localized("No recent data"));
    const std::string time = pins::timeOfDay(*latest, locale);
    return Text(stat + " · " + embedded(time), {time});
}

MetricStats MetricStats::of(const std::vector<snapshot::SnapshotPoint>& points,
                            std::optional<std::string> unit) {
    MetricStats stats{.unit = std::move(unit)};
    double sum = 0;
    for (const snapshot::SnapshotPoint& point : points) {
        if (!stats.least || point.v < *stats.least) stats.least = point.v;
        if (!stats.most || point.v > *stats.most) stats.most = point.v;
        sum += point.v;
    }
    if (!points.empty()) stats.mean = sum / static_cast<double>(points.size());
    return stats;
}

View MetricStats::body(const Environment& environment) const {
    const locale::UserLocale& locale = environment.locale;
    return HStack(Alignment::top, 0,  // as one of them may shrink
                  {cell(stat(localized("Min"), least, locale).padding({.trailing = apart})),
                   cell(stat(localized("Max"), most, locale).padding({.trailing = apart})),
                   cell(stat(localized("Avg"), mean, locale))});
}

View MetricStats::stat(const std::string& label, std::optional<double> value,
                       const locale::UserLocale& locale) const {
    return VStack(Alignment::leading, 1,
                  {
                      Text(label).font(Font::system(10)).foreground(Palette::tertiary),
                      Text(value ? formatValue(*value, unit, locale) : noValue)
                          .font(Font::system(12, Weight::medium))
                          .monospacedDigits()
                          .foreground(Palette::secondary)
                          .lineLimit(1)
                          .minimumScale(0.7),
                  });
}

}  // namespace tessary::metric
