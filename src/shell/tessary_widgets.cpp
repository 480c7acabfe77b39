#include "shell/tessary_widgets.h"

#include "alarm_pin/alarm_pin.h"
#include "alarms/alarms_widget_view.h"
#include "metric/metric_pin.h"
#include "pins/pin_widget.h"

namespace tessary::shell {

std::vector<WidgetConfiguration> TessaryWidgets::body() const {
    return {
        alarms::alarmsConfiguration(source),
        pins::pinConfiguration<metric::MetricPin>(source),
        pins::pinConfiguration<alarm_pin::AlarmPin>(source),
    };
}

}  // namespace tessary::shell
