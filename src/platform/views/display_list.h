// The display list: what is drawn and where, in paint order. Every output is a painter of it.
#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "platform/views/environment.h"
#include "platform/views/geometry.h"
#include "platform/views/paint.h"
#include "platform/views/path.h"

namespace tessary::views {

struct TextElement {
    std::string text{};                ///< the whole text, verbatim
    std::vector<std::string> lines{};  ///< as drawn, with the ellipsis where one is
    Font font{};
    Color color{};  ///< its opacity included
    std::optional<int> lineLimit{};
    Truncation truncation{Truncation::tail};
    double shrink{1};  ///< factor on the font's size
    bool operator==(const TextElement&) const = default;
};

struct SymbolElement {
    std::string name{};
    Font font{};
    Color color{};
    bool operator==(const SymbolElement&) const = default;
};

struct RectangleElement {
    Color color{};
    bool operator==(const RectangleElement&) const = default;
};

/// Drawn with its frame's shorter side as diameter, in the frame's middle.
struct CircleElement {
    Color color{};
    bool operator==(const CircleElement&) const = default;
};

struct PathElement {
    Path path{};  ///< from the frame's top left
    Paint paint{};
    bool operator==(const PathElement&) const = default;
};

using ElementContent =
    std::variant<TextElement, SymbolElement, RectangleElement, CircleElement, PathElement>;

struct Element {
    Rect frame{};   ///< points, from the widget's top left, its edges on pixels
    bool accent{};  ///< in the widget's accent group
    ElementContent content{};
    bool operator==(const Element&) const = default;
};

struct DisplayList {
    Size size{};  ///< the whole card, in points
    EdgeInsets margins{};
    double cornerRadius{};
    double scale{1};  ///< pixels per point
    std::optional<Color> background{};
    ColorScheme colorScheme{ColorScheme::light};
    std::optional<std::string> url{};
    std::vector<Element> elements{};
    bool operator==(const DisplayList&) const = default;
};

}  // namespace tessary::views
