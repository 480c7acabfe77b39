// The widgets that there are, as the extension lists them: all that the desktop knows of any.
//
//     const Kind* kind = kindNamed(kinds, "alarm");          // by its short name or its identifier
//     familyNamed(*kind, "medium")                           // {"medium", {344, 164}}
//     knownKinds(kinds)                                      // "alarms, metric, alarm"
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "desktop/places/placed_widget.h"
#include "protocol/replies.h"

namespace tessary::places {

using Kind = protocol::Widget;
using Kinds = std::vector<Kind>;

/// Null for another word.
const Kind* kindNamed(const Kinds& kinds, std::string_view word);

/// What it is called for short, as far as the kinds tell; else its last word.
std::string nameOf(const std::string& kind, const Kinds& kinds);

/// The size of a family's name, short or in full; none for another word.
std::optional<Family> familyNamed(const Kind& kind, std::string_view word);

/// In the kind's order.
std::vector<Family> familiesOf(const Kind& kind);

/// Those that can be set to show a pin.
Kinds takingPins(Kinds kinds);

/// The short names, joined by ", ".
std::string knownKinds(const Kinds& kinds);
std::string knownFamilies(const Kind& kind);

/// "Medium", for a label.
std::string titled(std::string name);

}  // namespace tessary::places
