// Finding a widget of the bundle by what a person calls it.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "shell/tessary_widgets.h"

namespace tessary::host {

/// The widget of a kind identifier or a short name: "alarms", "alarm", "metric". None for another.
std::optional<widgets::WidgetConfiguration> findWidget(std::string_view word);

}  // namespace tessary::host
