// What the bundle answers, as the records that the command and the process both print.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/intents/entity.h"
#include "platform/widgets/widget_configuration.h"
#include "protocol/replies.h"

namespace tessary::extension {

/// The widgets in the bundle's order.
protocol::List bundleList();

protocol::Suggestions suggestions(const intents::WidgetConfigurationIntent& intent);
protocol::Entities entities(const intents::WidgetConfigurationIntent& intent,
                            const std::vector<std::string>& ids);

std::optional<protocol::Policy> policyOf(const widgets::WidgetTimeline& timeline);

}  // namespace tessary::extension
