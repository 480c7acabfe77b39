#include "display_list_rules.h"

#include <cmath>
#include <string>

#include "fuzzer.h"
#include "platform/drawing/text_painter.h"
#include "platform/foundation/utf8.h"
#include "uri.h"

namespace tessary::fuzz {
namespace {

using namespace views;

constexpr double noise = 1e-6;  ///< of sums of lengths, in pixels

bool isShare(double value) { return value >= 0 && value <= 1; }

void checkColor(const Color& color) {
    const bool drawable = isShare(color.red) && isShare(color.green) && isShare(color.blue);
    require(drawable && isShare(color.opacity), "a colour's components are shares", color.hex());
}

/// Checks what an element draws.
struct ContentRules {
    void operator()(const TextElement& text) const {
        require(foundation::isUTF8(text.text), "a text is UTF-8", text.text);
        const auto limit = static_cast<std::size_t>(text.lineLimit.value_or(1000));
        require(text.lines.size() <= limit, "a text keeps to its lines", text.text);
        for (const std::string& line : text.lines)
            require(isOneLine(line), "a line is one line", line);
        require(text.shrink > 0 && text.shrink <= 1, "a text does not grow", text.text);
        checkFont(text.font);
        checkColor(text.color);
    }
    void operator()(const SymbolElement& symbol) const {
        require(!symbol.name.empty(), "a symbol has a name");
        checkFont(symbol.font);
        checkColor(symbol.color);
    }
    void operator()(const RectangleElement& rectangle) const { checkColor(rectangle.color); }
    void operator()(const CircleElement& circle) const { checkColor(circle.color); }
    void operator()(const PathElement& path) const {
        path.path.each([](const PathCommand& command) {
            for (const Point& point : {command.to, command.control1, command.control2})
                require(std::isfinite(point.x) && std::isfinite(point.y), "a path is finite");
        });
        std::visit(*this, path.paint);
    }
    void operator()(const Stroke& stroke) const {
        require(stroke.width > 0 && std::isfinite(stroke.width), "a stroke has a width");
        checkColor(stroke.color);
    }
    void operator()(const Fill& fill) const {
        require(!fill.gradient.empty(), "a fill has a colour");
        for (const Color& color : fill.gradient) checkColor(color);
    }

    static void checkFont(const Font& font) {
        require(font.size > 0 && font.size < 100, "a font has a size");
    }
};

std::string shown(const Rect& frame) {
    return std::to_string(frame.minX()) + "," + std::to_string(frame.minY()) + " " +
           std::to_string(frame.size.width) + "x" + std::to_string(frame.size.height);
}

bool isOnPixel(double edge, double scale) {
    return std::abs(edge * scale - std::round(edge * scale)) <= noise;
}

void checkFrame(const Rect& frame, const DisplayList& list) {
    const bool finite = std::isfinite(frame.maxX()) && std::isfinite(frame.maxY());
    require(finite, "a frame is finite", shown(frame));
    require(frame.size.width >= 0 && frame.size.height >= 0, "a frame is no hole", shown(frame));
    for (const double edge : {frame.minX(), frame.maxX(), frame.minY(), frame.maxY()})
        require(isOnPixel(edge, list.scale), "edges lie on pixels", shown(frame));
    require(frame.minX() >= -noise && frame.minY() >= -noise &&
                frame.maxX() <= list.size.width + noise && frame.maxY() <= list.size.height + noise,
            "an element lies on the card", shown(frame) + "\n" + drawing::paintText(list));
}

}  // namespace

void checkDisplayList(const DisplayList& list) {
    require(!list.elements.empty(), "a card shows something");
    for (const Element& element : list.elements) {
        checkFrame(element.frame, list);
        std::visit(ContentRules{}, element.content);
    }
    if (list.background) checkColor(*list.background);
    if (list.url) require(isURI(*list.url), "a link is a URI", *list.url);
}

}  // namespace tessary::fuzz
