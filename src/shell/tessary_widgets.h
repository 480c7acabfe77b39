// The extension's table of contents: the widgets that it offers.
//
//     for (const WidgetConfiguration& widget : TessaryWidgets{}.body()) { ... }
#pragma once

#include <vector>

#include "platform/widgets/widget_configuration.h"

namespace tessary::shell {

using widgets::WidgetConfiguration;

/// The bundle; its widgets in the order in which a gallery lists them. Made anew at each call.
struct TessaryWidgets {
    std::vector<WidgetConfiguration> body() const;
};

struct AlarmsWidget {
    WidgetConfiguration body() const;
};
struct MetricWidget {
    WidgetConfiguration body() const;
};
struct AlarmPinWidget {
    WidgetConfiguration body() const;
};

}  // namespace tessary::shell
