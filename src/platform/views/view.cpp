#include "platform/views/view.h"

namespace tessary::views {

namespace nodes {

// Written out, not defaulted: clang 14 cannot default them for members that hold views themselves.
static bool operator==(const Group& a, const Group& b) { return a.children == b.children; }
static bool operator==(const Stack& a, const Stack& b) {
    return a.axis == b.axis && a.alignment == b.alignment && a.spacing == b.spacing &&
           a.children == b.children;
}
static bool operator==(const Layers& a, const Layers& b) {
    return a.alignment == b.alignment && a.children == b.children;
}
static bool operator==(const Modified& a, const Modified& b) {
    return a.modifier == b.modifier && a.child == b.child;
}

}  // namespace nodes

bool operator==(const View& a, const View& b) { return a.node_ == b.node_; }

View View::modified(nodes::Modifier modifier) const {
    return View{Node{nodes::Modified{*this, std::move(modifier)}}};
}

View View::font(Font font) const { return changed(&Environment::font, font); }
View View::weight(Weight weight) const { return changed(&Environment::weight, weight); }
View View::monospacedDigits() const { return changed(&Environment::monospacedDigits, true); }
View View::foreground(Color color) const { return changed(&Environment::foreground, color); }
View View::lineLimit(int lines) const {
    return changed(&Environment::lineLimit, std::max(lines, 1));
}
View View::truncation(Truncation mode) const { return changed(&Environment::truncation, mode); }
View View::minimumScale(double factor) const { return changed(&Environment::minimumScale, factor); }
View View::opacity(double factor) const { return changed(&Environment::opacity, factor); }
View View::colorScheme(ColorScheme scheme) const {
    return changed(&Environment::colorScheme, scheme);
}
View View::redacted(RedactionReasons reasons) const {
    return changed(&Environment::redaction, reasons);
}
View View::unredacted() const { return changed(&Environment::redaction, {}); }
View View::accentable() const { return changed(&Environment::accent, true); }

View View::frame(FixedFrame frame) const { return modified(frame); }
View View::frame(FlexibleFrame frame) const { return modified(frame); }
View View::fixedSize(bool horizontal, bool vertical) const {
    return modified(nodes::FixedSize{horizontal, vertical});
}
View View::padding(EdgeInsets insets) const { return modified(nodes::Padding{insets}); }
View View::containerBackground(Color color) const {
    return modified(nodes::ContainerBackground{color});
}
View View::widgetURL(std::string url) const { return modified(nodes::WidgetURL{std::move(url)}); }

namespace {

template <class Node>
View made(Node node) {
    return View{View::Node{std::move(node)}};
}

}  // namespace

View Text(std::string content, std::vector<std::string> shorter) {
    return made(nodes::Text{std::move(content), std::move(shorter)});
}
View Image(std::string symbol) { return made(nodes::Image{std::move(symbol)}); }
View Label(std::string title, std::string symbol) {
    return made(nodes::Label{std::move(title), std::move(symbol)});
}
View Spacer(double minLength) { return made(nodes::Spacer{minLength}); }
View Rectangle(std::optional<Color> color) {
    return made(nodes::Shape{nodes::Shape::Kind::rectangle, color});
}
View Circle(std::optional<Color> color) {
    return made(nodes::Shape{nodes::Shape::Kind::circle, color});
}
View PaintedPath(Path path, Paint paint) {
    return made(nodes::PaintedPath{std::move(path), std::move(paint)});
}

View Group(Children children) { return made(nodes::Group{std::move(children.views)}); }
View VStack(Alignment alignment, double spacing, Children children) {
    return made(
        nodes::Stack{Axis::vertical, alignment.horizontal, spacing, std::move(children.views)});
}
View HStack(Alignment alignment, double spacing, Children children) {
    return made(
        nodes::Stack{Axis::horizontal, alignment.vertical, spacing, std::move(children.views)});
}
View ZStack(Alignment alignment, Children children) {
    return made(nodes::Layers{alignment, std::move(children.views)});
}

}  // namespace tessary::views
