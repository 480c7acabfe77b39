#include "shell/tessary_widgets.h"

#include "alarm_pin/alarm_pin.h"
#include "alarms/alarms_widget_view.h"
#include "metric/metric_pin.h"
#include "pins/pin_widget.h"
#include "platform/locale/localized.h"

namespace tessary::shell {

using locale::localized;
using widgets::WidgetFamily;

namespace {

const std::vector<WidgetFamily> everyFamily{WidgetFamily::systemSmall, WidgetFamily::systemMedium};

}  // namespace

std::vector<WidgetConfiguration> TessaryWidgets::body() const {
    return {AlarmsWidget{source}.body(), MetricWidget{source}.body(),
            AlarmPinWidget{source}.body()};
}

WidgetConfiguration AlarmsWidget::body() const {
    return widgets::configuration("com.tessary.desktop.widgets.alarms",
                                  alarms::AlarmsProvider{source}, alarms::alarmsWidget)
        .configurationDisplayName(localized("Alarms firing"))
        .description(localized("CloudWatch alarms in ALARM across the profiles Tessary watches."))
        .supportedFamilies(everyFamily);
}

WidgetConfiguration MetricWidget::body() const {
    return pins::pinConfiguration<metric::MetricPin>("com.tessary.desktop.widgets.metric", source)
        .configurationDisplayName(localized("CloudWatch metric"))
        .description(
            localized("A metric you pinned in Tessary: its latest value and recent hours."))
        .supportedFamilies(everyFamily);
}

WidgetConfiguration AlarmPinWidget::body() const {
    return pins::pinConfiguration<alarm_pin::AlarmPin>("com.tessary.desktop.widgets.alarm", source)
        .configurationDisplayName(localized("CloudWatch alarm"))
        .description(localized(
            "One alarm you pinned in Tessary: its state and its metric against the threshold."))
        .supportedFamilies(everyFamily);
}

}  // namespace tessary::shell
