#include "platform/views/layout.h"

#include <array>
#include <cstdio>

namespace tessary::views {

namespace {

void collect(PlacedNode node, std::vector<Element>& elements) {
    if (node.content) elements.push_back({node.frame, node.accent, *std::move(node.content)});
    for (PlacedNode& child : node.children) collect(std::move(child), elements);
}

void dump(const PlacedNode& node, std::size_t depth, std::string& text) {
    std::array<char, 128> frame{};
    std::snprintf(frame.data(), frame.size(), " %g,%g %gx%g", node.frame.minX(), node.frame.minY(),
                  node.frame.size.width, node.frame.size.height);
    text.append(2 * depth, ' ').append(node.kind).append(frame.data());
    if (node.content) {
        if (const auto* drawn = std::get_if<TextElement>(&*node.content))
            for (const std::string& line : drawn->lines) text += " \"" + line + "\"";
        if (const auto* symbol = std::get_if<SymbolElement>(&*node.content))
            text += " " + symbol->name;
    }
    text += '\n';
    for (const PlacedNode& child : node.children) dump(child, depth + 1, text);
}

/// What the card offers its content.
Rect contentArea(const Surface& surface) {
    const EdgeInsets& margins = surface.margins;
    return {{margins.leading, margins.top},
            {surface.size.width - margins.leading - margins.trailing,
             surface.size.height - margins.top - margins.bottom}};
}

/// Several nodes at the top lie over one another, in the middle.
LayoutNode root(std::vector<LayoutNode> nodes) {
    if (nodes.size() == 1) return std::move(nodes.front());
    LayoutNode layers{Alignment::center};
    layers.children = std::move(nodes);
    return layers;
}

}  // namespace

std::string dump(const PlacedNode& node) {
    std::string text;
    dump(node, 0, text);
    return text;
}

DisplayList layOut(View view, const Surface& surface, const Environment& environment,
                   Typesetter& typesetter) {
    Preferences preferences;
    LayoutNode node = root(resolve(std::move(view), environment, preferences));
    const Rect area = contentArea(surface);
    const Proposal offer = Proposal::points(area.size.width, area.size.height);
    const Size size = measure(node, offer, typesetter);
    const Point origin{area.minX() + offset(Along::center, area.size.width, size.width),
                       area.minY() + offset(Along::center, area.size.height, size.height)};
    const PixelGrid grid{surface.scale};

    DisplayList list{
        surface.size,           surface.margins,
        surface.cornerRadius,   surface.scale,
        preferences.background, preferences.colorScheme.value_or(environment.colorScheme),
        preferences.url,        {}};
    collect(rounded(place(std::move(node), origin, offer, typesetter, grid), grid), list.elements);
    return list;
}

}  // namespace tessary::views
