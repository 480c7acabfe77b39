#include "extension/widget_lookup.h"

namespace tessary::extension {

namespace {

/// What a kind is called for short: its last word.
std::string_view shortName(std::string_view kind) { return kind.substr(kind.rfind('.') + 1); }

}  // namespace

std::optional<widgets::WidgetConfiguration> findWidget(std::string_view word) {
    for (widgets::WidgetConfiguration& widget : shell::TessaryWidgets{}.body())
        if (widget.kind == word || shortName(widget.kind) == word) return std::move(widget);
    return std::nullopt;
}

std::optional<intents::AppEntity> configured(const intents::WidgetConfigurationIntent& intent,
                                             const PinChoice& choice) {
    switch (choice.kind) {
        case PinChoice::Kind::defaultResult: return intent.defaultResult();
        case PinChoice::Kind::none: return std::nullopt;
        case PinChoice::Kind::identifier: break;
    }
    return intent.entities({choice.identifier}).front();
}

}  // namespace tessary::extension
