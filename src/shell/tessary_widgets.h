// The extension's table of contents: the widgets that it offers.
//
//     for (const WidgetConfiguration& widget : TessaryWidgets{source}.body()) { ... }
#pragma once

#include <vector>

#include "platform/widgets/widget_configuration.h"
#include "snapshot/source.h"

namespace tessary::shell {

using snapshot::Source;
using widgets::WidgetConfiguration;

/// The bundle; its widgets in the order in which a gallery lists them. Made anew at each call;
/// what they answer comes from `source`.
struct TessaryWidgets {
    Source source{};
    std::vector<WidgetConfiguration> body() const;
};

}  // namespace tessary::shell
