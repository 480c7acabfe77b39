// Finding a widget of the bundle, and what it is configured with, by what a person calls them.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "shell/tessary_widgets.h"

namespace tessary::extension {

/// What a kind is called for short, its last word: "alarms".
std::string_view shortName(std::string_view kind);

/// The widget of a kind identifier or a short name: "alarms", "alarm", "metric". None for another.
std::optional<widgets::WidgetConfiguration> findWidget(std::string_view word,
                                                       const snapshot::Source& source);

/// Which entity a widget's configuration holds.
struct PinChoice {
    enum class Kind { defaultResult, none, identifier } kind{Kind::defaultResult};
    std::string identifier{};  ///< for an identifier; may be empty
    bool operator==(const PinChoice&) const = default;
};

/// The identifier that a request reaches the provider with; none for a widget without an intent. A
/// placeholder shows the same whatever was chosen, so that no file is read for its default.
std::optional<std::string> configured(const widgets::WidgetConfiguration& widget,
                                      widgets::Request request, const PinChoice& choice);

}  // namespace tessary::extension
