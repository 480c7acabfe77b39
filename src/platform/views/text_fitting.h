// Fitting a text into the room it is offered: wrapping, shrinking, truncating, in that order.
//
//     // where a character is 1 point wide
//     const auto room = Proposal::points(10, 100);
//     const TextStyle tail{.lineLimit = 1};
//     const TextStyle middle{.lineLimit = 1, .truncation = Truncation::middle};
//     fitText("orders-queue-age", tail, room, typesetter).lines       // {"orders-qu…"}
//     fitText("orders-queue-age", middle, room, typesetter).lines     // {"order…-age"}
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/views/environment.h"
#include "platform/views/proposal.h"
#include "platform/views/typesetter.h"

namespace tessary::views {

/// What of a text's surroundings decides how it fits.
struct TextStyle {
    Font font{};
    std::optional<int> lineLimit{};
    Truncation truncation{Truncation::tail};
    double minimumScale{1};
    bool operator==(const TextStyle&) const = default;
};

/// A text as it is drawn.
struct FittedText {
    std::vector<std::string> lines{};  ///< at least one, in reading order, an ellipsis where cut
    double scale{1};                   ///< factor on the font's size
    bool isCut{};                      ///< some of it is left out
    Size size{};  ///< the longest line's width by all lines' heights, in points
    bool operator==(const FittedText&) const = default;
};

/// Fits a text into the room of a proposal.
///
/// A line ends at a hard break (LF, CR, CR LF, VT, FF, NEL, LS, PS) and, at a finite width, behind
/// a word, inside one only where the word alone is too wide. As many lines are allowed as the
/// height and the limit have room for, and always one. A text that needs more shrinks to the
/// largest scale, not below the minimum, at which it needs no more; failing that it is cut at the
/// minimum, with U+2026 in its last line. What stands behind a hard break in the last line that is
/// allowed follows there after a space. A width that has no room for one character still gets one
/// a line.
///
/// Other control characters take no room and show nothing; a tab is a space. A text longer than
/// 16 KiB is fitted as if its middle were left out: no card has room for what goes missing.
FittedText fitText(std::string_view text, const TextStyle& style, const Proposal& proposal,
                   Typesetter& typesetter);

/// The same of the first that need not be cut, of the text and what says it shorter; else the last.
FittedText fitText(std::string_view text, const std::vector<std::string>& shorter,
                   const TextStyle& style, const Proposal& proposal, Typesetter& typesetter);

}  // namespace tessary::views
