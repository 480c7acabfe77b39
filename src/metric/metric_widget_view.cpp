#include "metric/metric_widget_view.h"

#include "pins/pin_presentation.h"
#include "platform/foundation/percent_encoding.h"
#include "platform/locale/localized.h"
#include "presentation/sparkline.h"
#include "presentation/value_formatting.h"

namespace tessary::metric {

using namespace views;
using locale::localized;
using presentation::formatValue;
using presentation::Palette;

namespace {

constexpr const char* noValue = "—";

pins::PinTexts texts() {
    return {
        .heading = localized("CloudWatch metric"),
        .howToPin = localized("In Tessary, use Add to widget on a CloudWatch chart."),
        .chooseTitle = localized("Choose a metric"),
        .howToChoose = localized("Edit the widget to pick one of your pinned metrics."),
        .removed =
            localized("This metric was removed in Tessary. Edit the widget to choose another."),
    };
}

View chart(const Pinned& state) {
    return presentation::Sparkline{state.pin.points, std::nullopt,
                                   state.muted() ? Palette::tertiary : Palette::accent};
}

View smallLayout(const Pinned& state, Date now) {
    return VStack(
        Alignment::leading, 4,
        {MetricHeader{state.pin}, MetricValue{state}, chart(state), MetricFooter{state, now}});
}

View mediumLayout(const Pinned& state, Date now) {
    return HStack(Alignment::top, 14,
                  {
                      View{MetricSummary{state, now}}.frame(
                          FixedFrame{.width = 128, .alignment = Alignment::leading}),
                      VStack(Alignment::leading, 6, {chart(state), MetricStats{state.pin}}),
                  });
}

}  // namespace

View MetricWidgetEntryView::body() const {
    return pins::pinWidget<MetricWidgetView>(entry, texts().heading, link());
}

std::optional<std::string> MetricWidgetEntryView::link() const {
    const Pinned* state = entry.display.pinned();
    if (state == nullptr) return std::nullopt;
    return "tessary://cloudwatch/metric?pin=" + foundation::percentEncoded(state->pin.id);
}

View MetricWidgetView::body() const {
    return pins::pinContent(display, texts(), [&](const Pinned& state) {
        return medium ? mediumLayout(state, now) : smallLayout(state, now);
    });
}

View MetricSummary::body() const {
    const MetricPinsSnapshot::Pin& pin = state.pin;
    return VStack(Alignment::leading, 0,
                  {
                      MetricHeader{pin},
                      Text(pin.profile + " · " + pin.region)
                          .font(Font::system(10))
                          .foreground(Palette::tertiary)
                          .lineLimit(1)
                          .truncation(Truncation::middle),
                      Spacer(4),
                      MetricValue{state},
                      Spacer(4),
                      MetricFooter{state, now},
                  });
}

View MetricHeader::body() const {
    return Text(pin.label)
        .font(Font::system(11, Weight::medium))
        .foreground(Palette::secondary)
        .lineLimit(1)
        .truncation(Truncation::middle);
}

View MetricValue::body() const {
    const auto& latest = state.pin.latest;
    return Text(latest ? formatValue(latest->v, state.pin.unit) : noValue)
        .font(Font::system(28, Weight::semibold, FontDesign::rounded))
        .monospacedDigits()
        .foreground(state.muted() ? Palette::tertiary : Palette::primary)
        .accentable()
        .lineLimit(1)
        .minimumScale(0.5);
}

View MetricFooter::body() const {
    if (state.muted()) return pins::pinProblem(state, now);
    const MetricPinsSnapshot::Pin& pin = state.pin;
    return Text(pin.latest ? pin.stat + " · " + pins::timeOfDay(*pin.latest)
                           : localized("No recent data"))
        .font(Font::system(11))
        .foreground(Palette::tertiary)
        .lineLimit(1);
}

View MetricStats::body() const {
    std::optional<double> least;
    std::optional<double> most;
    double sum = 0;
    for (const snapshot::SnapshotPoint& point : pin.points) {
        if (!least || point.v < *least) least = point.v;
        if (!most || point.v > *most) most = point.v;
        sum += point.v;
    }
    std::optional<double> mean;
    if (!pin.points.empty()) mean = sum / static_cast<double>(pin.points.size());
    return HStack(Alignment::center, 0,
                  {stat(localized("Min"), least), stat(localized("Max"), most),
                   stat(localized("Avg"), mean)});
}

View MetricStats::stat(const std::string& label, std::optional<double> value) const {
    return VStack(Alignment::leading, 1,
                  {
                      Text(label).font(Font::system(10)).foreground(Palette::tertiary),
                      Text(value ? formatValue(*value, pin.unit) : noValue)
                          .font(Font::system(12, Weight::medium))
                          .monospacedDigits()
                          .foreground(Palette::secondary)
                          .lineLimit(1)
                          .minimumScale(0.7),
                  })
        .frame(FlexibleFrame::unboundedWidth(Alignment::leading));
}

}  // namespace tessary::metric
