// Things that a user can choose from when configuring a widget.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tessary::intents {

/// One choice. A stored configuration keeps only its identifier.
struct AppEntity {
    std::string id{};
    std::string name{};    ///< the title that an editor shows, verbatim
    std::string detail{};  ///< the subtitle
    bool operator==(const AppEntity&) const = default;
};

/// What a host needs to let the user configure a widget: names, and the query behind the choice.
/// The functions read their files afresh at each call, from any thread, and never fail.
struct WidgetConfigurationIntent {
    std::string title{};       ///< of the intent and of its one parameter
    std::string entityType{};  ///< what one choice is called
    /// One entity an identifier, in their order; one that is gone comes back with a name that says
    /// so.
    std::function<std::vector<AppEntity>(const std::vector<std::string>& ids)> entities{};
    std::function<std::vector<AppEntity>()> suggestedEntities{};
    /// What a newly added widget takes; none where there is nothing to choose.
    std::function<std::optional<AppEntity>()> defaultResult{};
};

}  // namespace tessary::intents
