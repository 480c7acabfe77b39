// Long lines, made short enough to draw.
#pragma once

#include "platform/views/path.h"

namespace tessary::drawing {

/// A path of more commands than this is thinned before it is drawn; a chart has some hundred.
inline constexpr std::size_t manyCommands = 4000;

/// What a line of very many segments looks like at a scale (pixels per point): of the corners that
/// follow each other within half a pixel across, the first, the lowest, the highest and the last. A
/// line that goes back and forth so often that this leaves more than `manyCommands` groups of
/// corners is drawn through every so manieth of them; by then it has covered everything between.
/// Paths with curves, and those that are not long, come back as they are.
///
/// A painter that takes a millisecond for thirty segments takes half a minute for a million.
views::Path thinned(const views::Path& path, double scale);

}  // namespace tessary::drawing
