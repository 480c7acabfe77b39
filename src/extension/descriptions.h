// What the bundle answers, as JSON: the members that the command and the process both print.
#pragma once

#include <string>
#include <vector>

#include "platform/foundation/json_writing.h"
#include "platform/intents/entity.h"
#include "platform/widgets/widget_configuration.h"

namespace tessary::extension {

/// Into an open object: "bundle", and "widgets" in the bundle's order.
void describeBundle(foundation::JSONWriter& json);

/// Into an open object: "type", and "default" and "suggested", or the "entities" of `ids` where
/// there are any.
void describePins(foundation::JSONWriter& json, const intents::WidgetConfigurationIntent& intent,
                  const std::vector<std::string>& ids);

/// Into an open object: "policy".
void describePolicy(foundation::JSONWriter& json, const widgets::WidgetTimeline& timeline);

}  // namespace tessary::extension
