// Phase 4 of layout: edges move to pixels. Sizes follow from their edges, so that what touches
// still touches and a gap of whole points stays what it is.
#include <cmath>

#include "platform/views/layout.h"

namespace tessary::views {

namespace {

/// Sums of lengths differ in their last digits; an edge this close to the middle between two pixels
/// counts as lying in the middle. In pixels.
constexpr double noise = 1e-6;

}  // namespace

double PixelGrid::snap(double edge) const {
    return std::floor(edge * scale_ + 0.5 + noise) / scale_;
}

Rect PixelGrid::snap(const Rect& rect) const {
    const Point origin{snap(rect.minX()), snap(rect.minY())};
    return {origin, {snap(rect.maxX()) - origin.x, snap(rect.maxY()) - origin.y}};
}

PlacedNode rounded(PlacedNode node, const PixelGrid& grid) {
    node.frame = grid.snap(node.frame);
    for (PlacedNode& child : node.children) child = rounded(std::move(child), grid);
    return node;
}

}  // namespace tessary::views
