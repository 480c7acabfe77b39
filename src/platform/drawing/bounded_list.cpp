#include "platform/drawing/bounded_list.h"

#include "platform/drawing/thinned_path.h"

namespace tessary::drawing {

namespace {

bool isContinuation(char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80; }

void cut(std::string& text) {
    if (text.size() <= longestText) return;
    std::size_t end = longestText;
    while (end > 0 && isContinuation(text[end])) --end;
    text = text.substr(0, end) + "\u2026";  // a string of its own, as the long one keeps its room
}

struct Bounding {
    double scale{};

    void operator()(views::TextElement& text) const { cut(text.text); }
    void operator()(views::PathElement& path) const {
        if (path.path.size() > manyCommands) path.path = thinned(path.path, scale);
    }
    void operator()(const auto&) const {}
};

}  // namespace

void bound(views::DisplayList& list) {
    for (views::Element& element : list.elements) std::visit(Bounding{list.scale}, element.content);
    if (list.url && list.url->size() > longestLink) list.url.reset();
}

}  // namespace tessary::drawing
