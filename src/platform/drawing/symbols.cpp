#include "platform/drawing/symbols.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/drawing/symbols/drawings.h"
#include "platform/drawing/symbols/outlines.h"

namespace tessary::drawing {

namespace {

constexpr double frameHeight = views::Font{1}.lineHeight();
constexpr double sideBearing = 0.03;

struct Entry {
    std::string_view name;
    Parts (*draw)(const Pen&);
};

constexpr std::array entries{
    Entry{"bell.slash", slashedBell},
    Entry{"checkmark.circle.fill", checkmarkInCircle},
    Entry{"exclamationmark.triangle.fill", exclamationMarkInTriangle},
    Entry{"hand.tap", tappingHand},
    Entry{"lock.fill", lock},
    Entry{"pause.circle.fill", pauseInCircle},
    Entry{"person.crop.circle.badge.exclamationmark", personInCircleWithBadge},
    Entry{"pin.slash", slashedPin},
};

constexpr auto names = [] {
    std::array<std::string_view, entries.size()> all{};
    std::ranges::transform(entries, all.begin(), &Entry::name);
    return all;
}();
static_assert(std::ranges::is_sorted(names));

constexpr Pen penOf(views::Weight weight) {
    switch (weight) {
        case views::Weight::regular: return {0.08, 0.094, 0.074, 0.49};
        case views::Weight::medium: return {0.095, 0.105, 0.073, 0.496};
        case views::Weight::semibold: return {0.114, 0.118, 0.072, 0.505};
    }
    return {};
}

/// Puts a drawing in a frame as wide as its ink and its side bearings.
Symbol framed(Parts parts) {
    double left = 0;
    double right = 0;
    for (const SymbolPart& part : parts) {
        const Extent extent = horizontalExtent(part.path);
        left = std::min(left, extent.min - part.stroke / 2);
        right = std::max(right, extent.max + part.stroke / 2);
    }
    const views::Point origin{sideBearing - left, frameHeight / 2};
    for (SymbolPart& part : parts) {
        part.path = part.path.transformed(1, 1, origin);
        part.cutout = part.cutout.transformed(1, 1, origin);
    }
    return {{right - left + 2 * sideBearing, frameHeight}, std::move(parts)};
}

}  // namespace

Symbol symbol(std::string_view name, views::Weight weight) {
    const auto* const entry = std::ranges::find(entries, name, &Entry::name);
    const auto draw = entry == entries.end() ? dottedSquare : entry->draw;
    return framed(draw(penOf(weight)));
}

std::span<const std::string_view> symbolNames() { return names; }

}  // namespace tessary::drawing
