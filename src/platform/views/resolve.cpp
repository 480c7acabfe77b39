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

    Nodes operator()(nodes::Text text) const {
        const TextStyle style{environment.resolvedFont(), environment.lineLimit,
                              environment.truncation, environment.minimumScale};
        return leaf(LayoutNode::Text{std::move(text.content), std::move(text.shorter), style,
                                     color(), redacted()});
    }
    Nodes operator()(nodes::Image image) const {
        return leaf(LayoutNode::Symbol{std::move(image.symbol), environment.resolvedFont(), color(),
                                       redacted()});
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

    Nodes operator()(nodes::Group group) const { return all(std::move(group.children)); }
    Nodes operator()(nodes::Stack stack) const {
        const Resolver inside{environment, preferences, stack.axis};
        return inside.container(LayoutNode::Stack{stack.axis, stack.alignment, stack.spacing},
                                std::move(stack.children));
    }
    Nodes operator()(nodes::Layers layers) const {
        return Resolver{environment, preferences}.container(layers.alignment,
                                                            std::move(layers.children));
    }

    Nodes operator()(nodes::Modified modified) const {
        View child = std::move(modified.child).take();
        return std::visit([&](const auto& modifier) { return apply(modifier, std::move(child)); },
                          modified.modifier);
    }
    Nodes operator()(nodes::SizeReader reader) const {
        return leaf(LayoutNode::Reader{std::move(reader), environment});
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
    Nodes container(LayoutNode::Kind kind, std::vector<View> children) const {
        Nodes result = leaf(std::move(kind));
        result.front().children = all(std::move(children));
        return result;
    }
    Nodes all(std::vector<View> children) const {
        Nodes result;
        for (View& child : children)
            for (LayoutNode& node : in(environment, std::move(child)))
                result.push_back(std::move(node));
        return result;
    }
    Nodes in(const Environment& inner, View view) const {
        return std::visit(Resolver{inner, preferences, axis}, std::move(view).take());
    }

    Nodes apply(const EnvironmentChange& change, View child) const {
        const auto* scheme = std::get_if<Setting<ColorScheme>>(&change);
        if (scheme && !preferences.colorScheme) preferences.colorScheme = scheme->value;
        Environment inner = environment;
        std::visit([&](const auto& setting) { setting.apply(inner); }, change);
        return in(inner, std::move(child));
    }
    Nodes apply(const nodes::ContainerBackground& background, View child) const {
        if (!preferences.background) preferences.background = background.color;
        return in(environment, std::move(child));
    }
    Nodes apply(const nodes::WidgetURL& link, View child) const {
        if (!preferences.url) preferences.url = link.url;
        return in(environment, std::move(child));
    }
    /// A modifier of the layout wraps each node of a group on its own.
    template <class LayoutModifier>
    Nodes apply(const LayoutModifier& modifier, View child) const {
        Nodes result;
        for (LayoutNode& node : in(environment, std::move(child))) {
            LayoutNode wrapper{modifier, environment.accent};
            wrapper.children.push_back(std::move(node));
            result.push_back(std::move(wrapper));
        }
        return result;
    }
};

}  // namespace

std::vector<LayoutNode> resolve(View view, const Environment& environment,
                                Preferences& preferences) {
    return std::visit(Resolver{environment, preferences}, std::move(view).take());
}

}  // namespace tessary::views
