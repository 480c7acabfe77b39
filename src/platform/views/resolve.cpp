// Phase 0 of layout: the environment travels down and every node keeps what it needs of it.
#include "platform/views/layout.h"

namespace tessary::views {

namespace {

using Nodes = std::vector<LayoutNode>;

/// What a label looks like where no style says otherwise.
View plainLabel(const View& icon, const View& title) {
    return HStack(Alignment::center, 6, {icon, title});
}

struct Resolver {
    const Environment& environment;
    Preferences& preferences;
    std::optional<Axis> axis{};  ///< of the nearest stack around

    Nodes operator()(const nodes::Nothing&) const { return {}; }

    Nodes operator()(const nodes::Text& text) const {
        const TextStyle style{environment.resolvedFont(), environment.lineLimit,
                              environment.truncation, environment.minimumScale};
        return leaf(LayoutNode::Text{text.content, style, color(), redacted()});
    }
    Nodes operator()(const nodes::Image& image) const {
        return leaf(
            LayoutNode::Symbol{image.symbol, environment.resolvedFont(), color(), redacted()});
    }
    Nodes operator()(const nodes::Label& label) const {
        const auto style = environment.labelStyle.body;
        return in(environment,
                  (style != nullptr ? style : plainLabel)(Image(label.symbol), Text(label.title)));
    }
    Nodes operator()(const nodes::Spacer& spacer) const {
        return leaf(LayoutNode::Spacer{spacer.minLength, axis});
    }
    Nodes operator()(const nodes::Shape& shape) const {
        const Color own = shape.color.value_or(environment.foreground);
        return leaf(LayoutNode::Shape{shape.kind, own.withOpacity(environment.opacity)});
    }
    Nodes operator()(nodes::PaintedPath path) const {
        fade(path.paint);
        return leaf(std::move(path));
    }

    Nodes operator()(const nodes::Group& group) const { return all(group.children); }
    Nodes operator()(const nodes::Stack& stack) const {
        const Resolver inside{environment, preferences, stack.axis};
        return inside.container(LayoutNode::Stack{stack.axis, stack.alignment, stack.spacing},
                                stack.children);
    }
    Nodes operator()(const nodes::Layers& layers) const {
        return Resolver{environment, preferences}.container(layers.alignment, layers.children);
    }

    Nodes operator()(const nodes::Modified& modified) const {
        return std::visit([&](const auto& modifier) { return apply(modifier, *modified.child); },
                          modified.modifier);
    }
    Nodes operator()(const nodes::SizeReader& reader) const {
        return leaf(LayoutNode::Reader{reader, environment});
    }
    Nodes operator()(const nodes::EnvironmentReader& reader) const {
        return in(environment, reader.content(environment));
    }

private:
    Color color() const { return environment.foreground.withOpacity(environment.opacity); }
    bool redacted() const { return environment.redaction.placeholder; }

    void fade(Paint& paint) const {
        if (auto* stroke = std::get_if<Stroke>(&paint)) {
            stroke->color = stroke->color.withOpacity(environment.opacity);
            return;
        }
        for (Color& stop : std::get<Fill>(paint).gradient)
            stop = stop.withOpacity(environment.opacity);
    }

    Nodes leaf(LayoutNode::Kind kind) const {
        Nodes result;
        result.push_back({std::move(kind), environment.accent});
        return result;
    }
    Nodes container(LayoutNode::Kind kind, const std::vector<View>& children) const {
        Nodes result = leaf(std::move(kind));
        result.front().children = all(children);
        return result;
    }
    Nodes all(const std::vector<View>& children) const {
        Nodes result;
        for (const View& child : children)
            for (LayoutNode& node : in(environment, child)) result.push_back(std::move(node));
        return result;
    }
    Nodes in(const Environment& inner, const View& view) const {
        return std::visit(Resolver{inner, preferences, axis}, view.node());
    }

    Nodes apply(const EnvironmentChange& change, const View& child) const {
        if (change.colorScheme && !preferences.colorScheme)
            preferences.colorScheme = change.colorScheme;
        return in(change.applied(environment), child);
    }
    Nodes apply(const nodes::ContainerBackground& background, const View& child) const {
        if (!preferences.background) preferences.background = background.color;
        return in(environment, child);
    }
    Nodes apply(const nodes::WidgetURL& link, const View& child) const {
        if (!preferences.url) preferences.url = link.url;
        return in(environment, child);
    }
    /// A modifier of the layout wraps each node of a group on its own.
    template <class LayoutModifier>
    Nodes apply(const LayoutModifier& modifier, const View& child) const {
        Nodes result;
        for (LayoutNode& node : in(environment, child)) {
            LayoutNode wrapper{modifier, environment.accent};
            wrapper.children.push_back(std::move(node));
            result.push_back(std::move(wrapper));
        }
        return result;
    }
};

}  // namespace

std::vector<LayoutNode> resolve(const View& view, const Environment& environment,
                                Preferences& preferences) {
    return std::visit(Resolver{environment, preferences}, view.node());
}

}  // namespace tessary::views
