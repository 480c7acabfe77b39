#include "desktop/places/kinds.h"

#include <algorithm>

#include "platform/foundation/joined.h"

namespace tessary::places {

namespace {

Family familyOf(const protocol::Size& size) {
    return {size.name, {static_cast<int>(size.width), static_cast<int>(size.height)}};
}

}  // namespace

const Kind* kindNamed(const Kinds& kinds, std::string_view word) {
    const auto is = [&](const Kind& kind) { return kind.kind == word || kind.name == word; };
    const auto found = std::ranges::find_if(kinds, is);
    return found == kinds.end() ? nullptr : &*found;
}

std::string nameOf(const std::string& kind, const Kinds& kinds) {
    const auto known = kindNamed(kinds, kind);
    return known ? known->name : shortName(kind);
}

std::optional<Family> familyNamed(const Kind& kind, std::string_view word) {
    for (const auto& size : kind.sizes)
        if (size.name == word || size.family == word) return familyOf(size);
    return std::nullopt;
}

std::vector<Family> familiesOf(const Kind& kind) {
    std::vector<Family> families;
    for (const auto& size : kind.sizes) families.push_back(familyOf(size));
    return families;
}

Kinds takingPins(Kinds kinds) {
    std::erase_if(kinds, [](const Kind& kind) { return !kind.takesPin; });
    return kinds;
}

std::string knownKinds(const Kinds& kinds) { return foundation::joined(kinds, ", ", &Kind::name); }

std::string knownFamilies(const Kind& kind) {
    return foundation::joined(kind.sizes, ", ", &protocol::Size::name);
}

std::string titled(std::string name) {
    if (!name.empty() && name[0] >= 'a' && name[0] <= 'z') name[0] += 'A' - 'a';
    return name;
}

}  // namespace tessary::places
