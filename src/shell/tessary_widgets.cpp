#include "shell/tessary_widgets.h"

#include "alarm_pin/alarm_pin_provider.h"
#include "alarm_pin/alarm_pin_widget_view.h"
#include "alarms/alarms_provider.h"
#include "alarms/alarms_widget_view.h"
#include "metric/metric_provider.h"
#include "metric/metric_widget_view.h"
#include "platform/locale/localized.h"

namespace tessary::shell {

using alarms::AlarmsEntry;
using locale::localized;
using widgets::WidgetFamily;

namespace {

const std::vector<WidgetFamily> everyFamily{WidgetFamily::systemSmall, WidgetFamily::systemMedium};

}  // namespace

std::vector<WidgetConfiguration> TessaryWidgets::body() const {
    return {AlarmsWidget{}.body(), MetricWidget{}.body(), AlarmPinWidget{}.body()};
}

WidgetConfiguration AlarmsWidget::body() const {
    return widgets::StaticConfiguration<AlarmsEntry>(
               "com.tessary.desktop.widgets.alarms", alarms::AlarmsProvider{},
               [](const AlarmsEntry& entry) {
                   return views::View{alarms::AlarmsWidgetEntryView{entry}};
               })
        .configurationDisplayName(localized("Alarms firing"))
        .description(localized("CloudWatch alarms in ALARM across the profiles Tessary watches."))
        .supportedFamilies(everyFamily);
}

WidgetConfiguration MetricWidget::body() const {
    return widgets::AppIntentConfiguration<metric::MetricEntry>(
               "com.tessary.desktop.widgets.metric",
               pins::pinIntent<metric::MetricPinQuery>(localized("Metric"),
                                                       localized("Pinned metric")),
               metric::MetricProvider{},
               [](const metric::MetricEntry& entry) {
                   return views::View{metric::MetricWidgetEntryView{entry}};
               })
        .configurationDisplayName(localized("CloudWatch metric"))
        .description(
            localized("A metric you pinned in Tessary: its latest value and recent hours."))
        .supportedFamilies(everyFamily);
}

WidgetConfiguration AlarmPinWidget::body() const {
    return widgets::AppIntentConfiguration<alarm_pin::AlarmPinEntry>(
               "com.tessary.desktop.widgets.alarm",
               pins::pinIntent<alarm_pin::AlarmPinQuery>(localized("Alarm"),
                                                         localized("Pinned alarm")),
               alarm_pin::AlarmPinProvider{},
               [](const alarm_pin::AlarmPinEntry& entry) {
                   return views::View{alarm_pin::AlarmPinWidgetEntryView{entry}};
               })
        .configurationDisplayName(localized("CloudWatch alarm"))
        .description(localized(
            "One alarm you pinned in Tessary: its state and its metric against the threshold."))
        .supportedFamilies(everyFamily);
}

}  // namespace tessary::shell
