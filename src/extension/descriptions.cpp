#include "extension/descriptions.h"

#include <cmath>

#include "extension/renderer.h"
#include "extension/widget_lookup.h"

namespace tessary::extension {

using intents::AppEntity;
using intents::WidgetConfigurationIntent;
using protocol::Entity;
using widgets::WidgetConfiguration;

namespace {

protocol::Size described(widgets::WidgetFamily family) {
    const auto [width, height] = surface(family, 1).size;
    return {.family = std::string{foundation::name(family)},
            .name = std::string{foundation::shortName(family)},
            .width = std::llround(width),
            .height = std::llround(height)};
}

protocol::Widget described(const WidgetConfiguration& widget) {
    protocol::Widget result{
        .kind = widget.kind,
        .name = std::string{shortName(widget.kind)},
        .configuration = widget.intent ? "intent" : "static",
        .takesPin = widget.intent.has_value(),
        .displayName = widget.displayName,
        .description = widget.text,
    };
    if (widget.intent) result.intent = widget.intent->title;
    for (const auto family : widget.families) {
        result.sizes.push_back(described(family));
        result.families.push_back(result.sizes.back().family);
    }
    return result;
}

Entity described(const AppEntity& entity) { return {entity.id, entity.name, entity.detail}; }

std::vector<Entity> described(const std::vector<AppEntity>& entities) {
    std::vector<Entity> result;
    result.reserve(entities.size());
    for (const AppEntity& entity : entities) result.push_back(described(entity));
    return result;
}

}  // namespace

protocol::List bundleList() {
    protocol::List list{.bundle = "TessaryWidgets"};
    for (const WidgetConfiguration& widget : shell::TessaryWidgets{}.body())
        list.widgets.push_back(described(widget));
    return list;
}

protocol::Suggestions suggestions(const WidgetConfigurationIntent& intent) {
    protocol::Suggestions result{.type = intent.entityType};
    if (const auto initial = intent.defaultResult()) result.initial = described(*initial);
    result.suggested = described(intent.suggestedEntities());
    return result;
}

protocol::Entities entities(const WidgetConfigurationIntent& intent,
                            const std::vector<std::string>& ids) {
    return {intent.entityType, described(intent.entities(ids))};
}

std::optional<protocol::Policy> policyOf(const widgets::WidgetTimeline& timeline) {
    if (!timeline.policy) return std::nullopt;
    return protocol::Policy{timeline.policy->after.seconds};
}

}  // namespace tessary::extension
