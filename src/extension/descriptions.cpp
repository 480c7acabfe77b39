#include "extension/descriptions.h"

#include <optional>

#include "shell/tessary_widgets.h"

namespace tessary::extension {

using foundation::JSONWriter;
using foundation::name;
using widgets::WidgetConfiguration;

namespace {

void describe(JSONWriter& json, const WidgetConfiguration& widget) {
    std::vector<std::string> families;
    for (const auto family : widget.families) families.emplace_back(name(family));
    json.object([&] {
        json.member("kind", widget.kind);
        json.member("configuration", widget.intent ? "intent" : "static");
        json.member("intent", widget.intent ? std::optional{widget.intent->title} : std::nullopt);
        json.member("displayName", widget.displayName);
        json.member("description", widget.text);
        json.member("families", families);
    });
}

}  // namespace

void describeBundle(JSONWriter& json) {
    json.member("bundle", "TessaryWidgets");
    json.key("widgets").array([&] {
        for (const WidgetConfiguration& widget : shell::TessaryWidgets{}.body())
            describe(json, widget);
    });
}

void describePins(JSONWriter& json, const intents::WidgetConfigurationIntent& intent,
                  const std::vector<std::string>& ids) {
    json.member("type", intent.entityType);
    if (!ids.empty()) {
        json.member("entities", intent.entities(ids));
        return;
    }
    json.member("default", intent.defaultResult());
    json.member("suggested", intent.suggestedEntities());
}

void describePolicy(JSONWriter& json, const widgets::WidgetTimeline& timeline) {
    json.key("policy");
    if (timeline.policy)
        json.object([&] { json.member("after", timeline.policy->after); });
    else
        json.null();
}

}  // namespace tessary::extension
