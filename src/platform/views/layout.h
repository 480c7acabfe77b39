// Layout: from a view to a tree of rectangles. The one header to open first.
//
//     0  resolve   environment, down   resolve.cpp   views become nodes, all inherited settled
//     1  propose   offers, down        proposal.h    what a parent offers a child
//     2  measure   sizes, up           measure.cpp   what the child answers; no parent changes it
//     3  place     positions, down     place.cpp     where the parent puts it
//     4  round     edges               round.cpp     edges, not sizes, move to pixels, last of all
//
// Each phase is a pure function of the one before, which it takes and moves on, for a path may be
// long; sizes are doubles until the last. Type is measured by the Typesetter handed in, heights
// come from the system font's own figures (font.h).
//
//     const Surface card{.size = {164, 164}, .margins = EdgeInsets::all(16), .scale = 2};
//     const auto list = layOut(Text("Hello").widgetURL("a:b"), card, {}, typesetter);
//     list.url                  // "a:b"
//     list.elements.front()     // the text, in the middle of the card
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/views/display_list.h"
#include "platform/views/proposal.h"
#include "platform/views/text_fitting.h"
#include "platform/views/view.h"

namespace tessary::views {

// ---- Phase 0: resolve ------------------------------------------------------------------------

/// What views say about the widget as a whole, wherever they stand but in a geometry reader, whose
/// content is made too late for it; the outermost counts.
struct Preferences {
    std::optional<Color> background{};
    std::optional<std::string> url{};
    std::optional<ColorScheme> colorScheme{};
    bool operator==(const Preferences&) const = default;
};

/// A view with everything inherited settled: groups, labels and readers of the environment are
/// gone.
struct LayoutNode {
    struct Text {
        std::string content{};
        std::vector<std::string> shorter{};
        TextStyle style{};
        Color color{};
        bool redacted{};
    };
    struct Symbol {
        std::string name{};
        Font font{};
        Color color{};
        bool redacted{};
    };
    struct Shape {
        nodes::Shape::Kind kind{};
        Color color{};
    };
    struct Spacer {
        double minLength{};
        std::optional<Axis> axis{};  ///< of the stack around; none outside of any
    };
    struct Stack {
        Axis axis{};
        Along alignment{};
        double spacing{};
    };
    struct Reader {
        nodes::SizeReader reader;
        Environment environment{};
    };
    using Kind = std::variant<Text, Symbol, Shape, nodes::PaintedPath, Spacer, Stack, Alignment,
                              FixedFrame, FlexibleFrame, nodes::FixedSize, nodes::Padding, Reader>;

    Kind kind;
    bool accent{};
    std::vector<LayoutNode> children{};  ///< one for a frame, fixed size or padding

    /// Answers given so far. A stack asks its children several times over, each of which asks its
    /// own; without a memory the questions double with each level.
    struct Answer {
        Proposal proposal{};
        Size size{};
    };
    mutable std::vector<Answer> answers{};
};

/// The nodes that a view amounts to: none for nothing, several for a group.
std::vector<LayoutNode> resolve(View view, const Environment& environment,
                                Preferences& preferences);

// ---- Phase 2: measure ------------------------------------------------------------------------

/// A node's own size for an offer.
Size measure(const LayoutNode& node, const Proposal& proposal, Typesetter& typesetter);

/// The offer that a frame, a fixed size or padding passes on to its child.
Proposal offerInside(const LayoutNode& wrapper, const Proposal& offered);

/// The offers that a stack makes to its children, in their order. `place` repeats them.
std::vector<Proposal> stackOffers(const LayoutNode& stack, const Proposal& proposal,
                                  Typesetter& typesetter);

// ---- Phases 3 and 4: place, round -----------------------------------------------------------

/// The pixels that edges move to.
class PixelGrid {
public:
    explicit PixelGrid(double scale) : scale_(scale) {}
    /// The nearest pixel edge, the later one of two equally near; the same for edges that differ by
    /// less than the noise of summing.
    double snap(double edge) const;
    Rect snap(const Rect& rect) const;

private:
    double scale_;
};

/// One rectangle of a finished layout. Comparable; `dump` prints it.
struct PlacedNode {
    std::string_view kind{};  ///< "VStack", "Text", "frame", ...
    Rect frame{};             ///< points, from the surface's top left
    bool accent{};
    std::optional<ElementContent> content{};  ///< what a leaf draws
    std::vector<PlacedNode> children{};
    bool operator==(const PlacedNode&) const = default;
};

/// Places a node whose parent offered it `proposal` and put it at `origin`.
PlacedNode place(LayoutNode node, Point origin, const Proposal& proposal, Typesetter& typesetter,
                 const PixelGrid& grid);

/// The same tree with every edge on a pixel.
PlacedNode rounded(PlacedNode node, const PixelGrid& grid);

/// Indented lines, one a node: "Text 16,16 62.5x13.1 \"Alarms firing\"".
std::string dump(const PlacedNode& node);

// ---- All of it -------------------------------------------------------------------------------

/// The card that a host gives a widget. Lengths in points, `scale` in pixels per point.
struct Surface {
    Size size{};
    EdgeInsets margins{};
    double cornerRadius{};
    double scale{1};
    bool operator==(const Surface&) const = default;
};

/// Offers a view the card less its margins, puts it in the middle of that, and lists what it draws.
DisplayList layOut(View view, const Surface& surface, const Environment& environment,
                   Typesetter& typesetter);

}  // namespace tessary::views
