// Phase 3 of layout: every node gets its rectangle, and a leaf what it draws.
#include "platform/views/layout.h"

namespace tessary::views {

namespace {

/// How visible the block is that stands for a redacted text or symbol.
constexpr double redactedOpacity = 0.25;

struct Placer {
    LayoutNode& node;  ///< what it holds is moved out of it
    Rect frame{};
    const Proposal& offered;
    Typesetter& typesetter;
    const PixelGrid& grid;

    PlacedNode operator()(LayoutNode::Text& text) const {
        if (text.redacted)
            return leaf("Text", RectangleElement{text.color.withOpacity(redactedOpacity)});
        const TextStyle& style = text.style;
        FittedText fitted = fitText(text.content, text.shorter, style, offered, typesetter);
        return leaf("Text",
                    TextElement{std::move(text.content), std::move(fitted.lines), style.font,
                                text.color, style.lineLimit, style.truncation, fitted.scale});
    }
    PlacedNode operator()(LayoutNode::Symbol& symbol) const {
        if (symbol.redacted)
            return leaf("Image", RectangleElement{symbol.color.withOpacity(redactedOpacity)});
        return leaf("Image", SymbolElement{std::move(symbol.name), symbol.font, symbol.color});
    }
    PlacedNode operator()(const LayoutNode::Shape& shape) const {
        if (shape.kind == nodes::Shape::Kind::circle)
            return leaf("Circle", CircleElement{shape.color});
        return leaf("Rectangle", RectangleElement{shape.color});
    }
    PlacedNode operator()(nodes::PaintedPath& path) const {
        return leaf("Path", PathElement{std::move(path.path), std::move(path.paint)});
    }
    PlacedNode operator()(const LayoutNode::Spacer&) const {
        return {"Spacer", frame, node.accent};
    }

    PlacedNode operator()(const LayoutNode::Stack& stack) const {
        const bool horizontal = stack.axis == Axis::horizontal;
        PlacedNode result{horizontal ? "HStack" : "VStack", frame, node.accent};
        const std::vector<Proposal> offers = stackOffers(node, offered, typesetter);
        double position = 0;
        for (std::size_t i = 0; i < node.children.size(); ++i) {
            const Size size = measure(node.children[i], offers[i], typesetter);
            const double side = horizontal ? offset(stack.alignment, frame.size.height, size.height)
                                           : offset(stack.alignment, frame.size.width, size.width);
            const Point at = horizontal ? Point{position, side} : Point{side, position};
            result.children.push_back(child(std::move(node.children[i]), at, offers[i]));
            position += (horizontal ? size.width : size.height) + stack.spacing;
        }
        return result;
    }
    PlacedNode operator()(const Alignment& alignment) const {
        PlacedNode result{"ZStack", frame, node.accent};
        for (LayoutNode& layer : node.children)
            result.children.push_back(aligned(std::move(layer), alignment, offered));
        return result;
    }

    PlacedNode operator()(const FixedFrame& fixed) const {
        return wrapper("frame", fixed.alignment);
    }
    PlacedNode operator()(const FlexibleFrame& flexible) const {
        return wrapper("frame", flexible.alignment);
    }
    PlacedNode operator()(const nodes::FixedSize&) const {
        return wrapper("fixedSize", Alignment::topLeading);
    }
    PlacedNode operator()(const nodes::Padding& padding) const {
        PlacedNode result{"padding", frame, node.accent};
        const Proposal inside = offerInside(node, offered);
        result.children.push_back(child(std::move(node.children.front()),
                                        {padding.insets.leading, padding.insets.top}, inside));
        return result;
    }

    /// The content learns the size that is drawn, so it is placed from the rounded frame.
    PlacedNode operator()(const LayoutNode::Reader& reader) const {
        PlacedNode result{"GeometryReader", grid.snap(frame), node.accent};
        const Size size = result.frame.size;
        Preferences ignored;
        for (LayoutNode& content :
             resolve(reader.reader.content(size), reader.environment, ignored))
            result.children.push_back(place(std::move(content), result.frame.origin,
                                            Proposal::points(size.width, size.height), typesetter,
                                            grid));
        return result;
    }

private:
    PlacedNode leaf(std::string_view kind, ElementContent content) const {
        return {kind, frame, node.accent, std::move(content)};
    }
    PlacedNode child(LayoutNode inner, Point at, const Proposal& offer) const {
        return place(std::move(inner), {frame.origin.x + at.x, frame.origin.y + at.y}, offer,
                     typesetter, grid);
    }
    PlacedNode aligned(LayoutNode inner, const Alignment& alignment, const Proposal& offer) const {
        const Size size = measure(inner, offer, typesetter);
        return child(std::move(inner),
                     {offset(alignment.horizontal, frame.size.width, size.width),
                      offset(alignment.vertical, frame.size.height, size.height)},
                     offer);
    }
    PlacedNode wrapper(std::string_view kind, const Alignment& alignment) const {
        PlacedNode result{kind, frame, node.accent};
        const Proposal inside = offerInside(node, offered);
        result.children.push_back(aligned(std::move(node.children.front()), alignment, inside));
        return result;
    }
};

}  // namespace

PlacedNode place(LayoutNode node, Point origin, const Proposal& proposal, Typesetter& typesetter,
                 const PixelGrid& grid) {
    const Rect frame{origin, measure(node, proposal, typesetter)};
    return std::visit(Placer{node, frame, proposal, typesetter, grid}, node.kind);
}

}  // namespace tessary::views
