// The pins of a file as choices in the widget editor.
#pragma once

#include <optional>
#include <string>
#include <unordered_map>
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
        const auto file = snapshot::load<Snapshot>(source);
        if (!file) return result;
        for (const Pin& pin : file->pins) result.push_back(entity(pin));
        return result;
    }

    std::optional<AppEntity> defaultResult() const {
        const std::vector<AppEntity> pins = suggestedEntities();
        return pins.empty() ? std::nullopt : std::optional{pins.front()};
    }

    /// One entity an identifier, in their order: the first pin that has it, or one named
    /// `removedTitle()` without a detail.
    std::vector<AppEntity> entities(const std::vector<std::string>& ids) const {
        std::unordered_map<std::string, const Pin*> pins;  // by what all that equal them share
        for (const std::string& id : ids) pins.try_emplace(locale::canonicalForm(id));
        const auto file = snapshot::load<Snapshot>(source);
        if (file)
            for (const Pin& pin : file->pins) {
                const auto wanted = pins.find(locale::canonicalForm(pin.id));
                if (wanted != pins.end() && !wanted->second) wanted->second = &pin;
            }
        std::vector<AppEntity> result;
        result.reserve(ids.size());
        for (const std::string& id : ids) {
            const Pin* pin = pins.at(locale::canonicalForm(id));
            result.push_back(pin ? entity(*pin) : AppEntity{id, removedTitle(), ""});
        }
        return result;
    }

private:
    using Snapshot = typename Kind::Snapshot;
    using Pin = typename Snapshot::Pin;

    static AppEntity entity(const Pin& pin) { return {pin.id, pin.label, Kind::detail(pin)}; }
};

}  // namespace tessary::pins
