// A display list of no more than a card can show, whatever the files held that it comes from.
//
//     bound(list);
//     list.elements        // a line of a million points has become the few thousand that show
#pragma once

#include <cstddef>

#include "platform/views/display_list.h"

namespace tessary::drawing {

/// Bytes. A card has room for some hundred characters, and nobody has more of them read out.
inline constexpr std::size_t longestText = std::size_t{64} << 10U;
/// Bytes. No program can be started with a longer word.
inline constexpr std::size_t longestLink = (std::size_t{128} << 10U) - 1;

/// Thins lines of very many segments (platform/drawing/thinned_path.h), cuts what is told of a text
/// behind `longestText`, where an ellipsis says so, and drops a link of more than `longestLink`. A
/// list without any of these stays as it is.
void bound(views::DisplayList& list);

}  // namespace tessary::drawing
