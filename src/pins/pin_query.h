// The pins of a file as choices in the widget editor.
#pragma once

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "platform/intents/entity.h"
#include "platform/locale/localized.h"
#include "platform/locale/text_equality.h"
#include "snapshot/reading.h"

namespace tessary::pins {

using intents::AppEntity;

/// What a pin is called that a widget names and the file no longer holds.
inline std::string removedTitle() { return locale::localized("Removed from Tessary"); }

/// Lists and finds the pins of a kind's file, in file order, repeated identifiers included. Reads
/// the file afresh at each call; without a usable one there are no pins.
template <class Kind>
struct PinQuery {
    snapshot::Source source{};

    std::vector<AppEntity> suggestedEntities() const {
        std::vector<AppEntity> result;
        const auto file = snapshot::load<typename Kind::Snapshot>(source);
        if (!file) return result;
        for (const auto& pin : file->pins) result.push_back({pin.id, pin.label, Kind::detail(pin)});
        return result;
    }

    std::optional<AppEntity> defaultResult() const {
        const std::vector<AppEntity> pins = suggestedEntities();
        return pins.empty() ? std::nullopt : std::optional{pins.front()};
    }

    /// One entity an identifier, in their order: the first pin that has it, or one named
    /// `removedTitle()` without a detail.
    std::vector<AppEntity> entities(const std::vector<std::string>& ids) const {
        const std::vector<AppEntity> pins = suggestedEntities();
        std::vector<AppEntity> result;
        for (const std::string& id : ids) {
            const auto found = std::ranges::find_if(
                pins, [&](const AppEntity& pin) { return locale::canonicallyEqual(pin.id, id); });
            result.push_back(found != pins.end() ? *found : AppEntity{id, removedTitle(), ""});
        }
        return result;
    }
};

}  // namespace tessary::pins
