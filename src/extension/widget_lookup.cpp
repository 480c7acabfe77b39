#include "extension/widget_lookup.h"

namespace tessary::extension {

std::string_view shortName(std::string_view kind) { return kind.substr(kind.rfind('.') + 1); }

std::optional<widgets::WidgetConfiguration> findWidget(std::string_view word,
                                                       const snapshot::Source& source) {
    for (widgets::WidgetConfiguration& widget : shell::TessaryWidgets{source}.body())
        if (widget.kind == word || shortName(widget.kind) == word) return std::move(widget);
    return std::nullopt;
}

std::optional<std::string> configured(const widgets::WidgetConfiguration& widget,
                                      widgets::Request request, const PinChoice& choice) {
    if (!widget.intent || choice.kind == PinChoice::Kind::none) return std::nullopt;
    if (choice.kind == PinChoice::Kind::identifier) return choice.identifier;
    if (request == widgets::Request::placeholder) return std::nullopt;
    const auto pin = widget.intent->defaultResult();
    return pin ? std::optional{pin->id} : std::nullopt;
}

}  // namespace tessary::extension
