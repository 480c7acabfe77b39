#include "platform/widgets/widget_configuration.h"

namespace tessary::widgets {

WidgetConfiguration WidgetConfiguration::configurationDisplayName(std::string name) const {
    WidgetConfiguration result = *this;
    result.displayName = std::move(name);
    return result;
}

WidgetConfiguration WidgetConfiguration::description(std::string newText) const {
    WidgetConfiguration result = *this;
    result.text = std::move(newText);
    return result;
}

WidgetConfiguration WidgetConfiguration::supportedFamilies(
    std::vector<WidgetFamily> supported) const {
    WidgetConfiguration result = *this;
    result.families = std::move(supported);
    return result;
}

WidgetConfiguration WidgetConfiguration::configuredBy(
    intents::WidgetConfigurationIntent choices) const {
    WidgetConfiguration result = *this;
    result.intent = std::move(choices);
    return result;
}

}  // namespace tessary::widgets
