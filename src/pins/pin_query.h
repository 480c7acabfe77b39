// The pins of a file as choices in the widget editor.
#pragma once

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "pins/pin_display.h"
#include "platform/intents/entity.h"
#include "platform/locale/localized.h"
#include "snapshot/snapshot_store.h"

namespace tessary::pins {

using intents::AppEntity;

/// What a pin is called that a widget names and the file no longer holds.
inline std::string removedTitle() { return locale::localized("Removed from Tessary"); }

/// Lists and finds the pins of `Snapshot`'s file, in file order, repeated identifiers included.
/// Reads the file afresh at each call; without a usable one there are no pins. `detail` says what
/// stands below a pin's label.
template <class Snapshot>
struct PinQuery {
    std::string (*detail)(const typename Snapshot::Pin&){};

    std::vector<AppEntity> suggestedEntities() const { return all(); }

    std::optional<AppEntity> defaultResult() const {
        const std::vector<AppEntity> pins = all();
        return pins.empty() ? std::nullopt : std::optional{pins.front()};
    }

    /// One entity an identifier, in their order: the first pin that has it, or one named
    /// `removedTitle()` without a detail.
    std::vector<AppEntity> entities(const std::vector<std::string>& ids) const {
        const std::vector<AppEntity> pins = all();
        std::vector<AppEntity> result;
        for (const std::string& id : ids) {
            const auto found = std::find_if(pins.begin(), pins.end(), [&](const AppEntity& pin) {
                return locale::canonicallyEqual(pin.id, id);
            });
            result.push_back(found != pins.end() ? *found : AppEntity{id, removedTitle(), ""});
        }
        return result;
    }

private:
    std::vector<AppEntity> all() const {
        const auto snapshot =
            supported(snapshot::SnapshotStore::read<Snapshot>(Snapshot::fileName));
        std::vector<AppEntity> result;
        if (!snapshot) return result;
        for (const auto& pin : snapshot->pins) result.push_back({pin.id, pin.label, detail(pin)});
        return result;
    }
};

/// The intent of a widget of one pin, for hosts.
template <class Query>
intents::WidgetConfigurationIntent pinIntent(const std::string& title,
                                             const std::string& entityType) {
    return {
        .title = title,
        .entityType = entityType,
        .entities = [](const std::vector<std::string>& ids) { return Query{}.entities(ids); },
        .suggestedEntities = [] { return Query{}.suggestedEntities(); },
        .defaultResult = [] { return Query{}.defaultResult(); },
    };
}

}  // namespace tessary::pins
