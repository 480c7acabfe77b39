// Phase 2 of layout: offers go in, sizes come back.
#include <algorithm>

#include "platform/views/layout.h"

namespace tessary::views {

namespace {

/// What a view without an ideal of its own answers where nothing is specified, in points.
constexpr double idealLength = 10;

/// A size or an offer seen along a stack's axis and across it.
double along(Axis axis, const Size& size) {
    return axis == Axis::horizontal ? size.width : size.height;
}
double across(Axis axis, const Size& size) {
    return axis == Axis::horizontal ? size.height : size.width;
}
Offer along(Axis axis, const Proposal& p) { return axis == Axis::horizontal ? p.width : p.height; }
Offer across(Axis axis, const Proposal& p) { return axis == Axis::horizontal ? p.height : p.width; }
Proposal offers(Axis axis, Offer along, Offer across) {
    return axis == Axis::horizontal ? Proposal{along, across} : Proposal{across, along};
}
Size size(Axis axis, double along, double across) {
    return axis == Axis::horizontal ? Size{along, across} : Size{across, along};
}

double totalSpacing(const LayoutNode::Stack& stack, std::size_t children) {
    return children > 1 ? stack.spacing * static_cast<double>(children - 1) : 0;
}

struct Measurer {
    const LayoutNode& node;
    const Proposal& offered;
    Typesetter& typesetter;

    Size operator()(const LayoutNode::Text& text) const {
        return fitText(text.content, text.shorter, text.style, offered, typesetter).size;
    }
    Size operator()(const LayoutNode::Symbol& symbol) const {
        return typesetter.symbolSize(symbol.name, symbol.font);
    }
    Size operator()(const LayoutNode::Shape&) const { return filled(); }
    Size operator()(const nodes::PaintedPath&) const { return filled(); }
    Size operator()(const LayoutNode::Reader&) const { return filled(); }
    /// Along its stack a spacer takes what is offered, across it nothing; outside of any, both.
    Size operator()(const LayoutNode::Spacer& spacer) const {
        const double width = std::max(offered.width.orIdeal(0), spacer.minLength);
        const double height = std::max(offered.height.orIdeal(0), spacer.minLength);
        return {spacer.axis == Axis::vertical ? 0 : width,
                spacer.axis == Axis::horizontal ? 0 : height};
    }

    Size operator()(const LayoutNode::Stack& stack) const {
        const std::vector<Proposal> proposals = stackOffers(node, offered, typesetter);
        double length = totalSpacing(stack, node.children.size());
        double breadth = 0;
        for (std::size_t i = 0; i < node.children.size(); ++i) {
            const Size answer = measure(node.children[i], proposals[i], typesetter);
            length += along(stack.axis, answer);
            breadth = std::max(breadth, across(stack.axis, answer));
        }
        return size(stack.axis, length, breadth);
    }
    Size operator()(const Alignment&) const {
        Size result;
        for (const LayoutNode& child : node.children) {
            const Size answer = measure(child, offered, typesetter);
            result = {std::max(result.width, answer.width), std::max(result.height, answer.height)};
        }
        return result;
    }

    Size operator()(const FixedFrame& frame) const {
        if (frame.width && frame.height) return {*frame.width, *frame.height};
        const Size answer = measure(node.children.front(), offerInside(node, offered), typesetter);
        return {frame.width.value_or(answer.width), frame.height.value_or(answer.height)};
    }
    Size operator()(const FlexibleFrame& frame) const {
        const Size answer = measure(node.children.front(), offerInside(node, offered), typesetter);
        return {bounded(frame.minWidth, frame.maxWidth, offered.width, answer.width),
                bounded(frame.minHeight, frame.maxHeight, offered.height, answer.height)};
    }
    Size operator()(const nodes::FixedSize&) const {
        return measure(node.children.front(), offerInside(node, offered), typesetter);
    }
    Size operator()(const nodes::Padding& padding) const {
        const Size answer = measure(node.children.front(), offerInside(node, offered), typesetter);
        return {answer.width + padding.insets.leading + padding.insets.trailing,
                answer.height + padding.insets.top + padding.insets.bottom};
    }

private:
    Size filled() const {
        return {offered.width.orIdeal(idealLength), offered.height.orIdeal(idealLength)};
    }
    /// A frame answers the offer kept within its bounds; a bound that is not given is the child's
    /// own size, and no bound at all leaves the child's answer as it is.
    static double bounded(std::optional<double> least, std::optional<double> most, Offer offer,
                          double child) {
        if (!least && !most) return child;
        const double upper = most.value_or(child);
        const double lower = least.value_or(std::min(child, upper));
        return std::max(lower, std::min(upper, offer.orIdeal(child)));
    }
};

Offer clampedOffer(Offer offer, std::optional<double> least, std::optional<double> most) {
    if (offer.isUnspecified()) return offer;
    const double length = std::min(offer.orIdeal(0), most.value_or(offer.orIdeal(0)));
    return Offer::points(std::max(length, least.value_or(0)));
}

/// How much more a child takes when it may have everything than when it may have nothing.
double flexibility(const LayoutNode& child, Axis axis, Offer across, Typesetter& typesetter) {
    const Size most = measure(child, offers(axis, Offer::unbounded(), across), typesetter);
    const Size least = measure(child, offers(axis, Offer::zero(), across), typesetter);
    return along(axis, most) - along(axis, least);
}

/// The lengths that spacers keep whatever happens.
double leastLength(const LayoutNode& stack, const std::vector<std::size_t>& spacers) {
    double length = 0;
    for (const std::size_t i : spacers)
        length += std::get<LayoutNode::Spacer>(stack.children[i].kind).minLength;
    return length;
}

/// A stack's room being shared out among its children.
struct Sharing {
    const LayoutNode& stack;
    Axis axis{};
    Offer side;
    double left{};  ///< not yet taken; infinite where the stack may have everything
    Typesetter& typesetter;

    struct Order {
        std::vector<std::size_t> others{};
        std::vector<std::size_t> spacers{};
    };
    /// The children from the least flexible to the most, equal ones as they stand. Spacers come
    /// last of all: they are there to take what the others leave.
    Order order() const {
        Order result;
        std::vector<double> flexible;
        for (std::size_t i = 0; i < stack.children.size(); ++i) {
            const bool isSpacer =
                std::holds_alternative<LayoutNode::Spacer>(stack.children[i].kind);
            (isSpacer ? result.spacers : result.others).push_back(i);
            flexible.push_back(isSpacer ? 0
                                        : flexibility(stack.children[i], axis, side, typesetter));
        }
        std::stable_sort(result.others.begin(), result.others.end(),
                         [&](std::size_t a, std::size_t b) { return flexible[a] < flexible[b]; });
        return result;
    }

    /// Offers each of these an equal share of what is left then, less what is kept for others.
    void offer(const std::vector<std::size_t>& children, double kept,
               std::vector<Proposal>& result) {
        std::size_t unsized = children.size();
        for (const std::size_t i : children) {
            const Offer share = Offer::points((left - kept) / static_cast<double>(unsized--));
            result[i] = offers(axis, share, side);
            if (!share.isUnbounded())
                left -= along(axis, measure(stack.children[i], result[i], typesetter));
        }
    }
};

}  // namespace

Proposal offerInside(const LayoutNode& wrapper, const Proposal& offered) {
    if (const auto* frame = std::get_if<FixedFrame>(&wrapper.kind)) {
        return {frame->width ? Offer::points(*frame->width) : offered.width,
                frame->height ? Offer::points(*frame->height) : offered.height};
    }
    if (const auto* frame = std::get_if<FlexibleFrame>(&wrapper.kind)) {
        return {clampedOffer(offered.width, frame->minWidth, frame->maxWidth),
                clampedOffer(offered.height, frame->minHeight, frame->maxHeight)};
    }
    if (const auto* fixed = std::get_if<nodes::FixedSize>(&wrapper.kind)) {
        return {fixed->horizontal ? Offer::unspecified() : offered.width,
                fixed->vertical ? Offer::unspecified() : offered.height};
    }
    if (const auto* padding = std::get_if<nodes::Padding>(&wrapper.kind)) {
        return {offered.width.less(padding->insets.leading + padding->insets.trailing),
                offered.height.less(padding->insets.top + padding->insets.bottom)};
    }
    return offered;
}

std::vector<Proposal> stackOffers(const LayoutNode& node, const Proposal& proposal,
                                  Typesetter& typesetter) {
    const auto& stack = std::get<LayoutNode::Stack>(node.kind);
    const std::size_t count = node.children.size();
    const Offer side = across(stack.axis, proposal);
    std::vector<Proposal> result(count, offers(stack.axis, Offer::unspecified(), side));
    const Offer room = along(stack.axis, proposal);
    if (room.isUnspecified()) return result;

    Sharing sharing{node, stack.axis, side, room.orIdeal(0) - totalSpacing(stack, count),
                    typesetter};
    const auto [others, spacers] = sharing.order();
    sharing.offer(others, leastLength(node, spacers), result);
    sharing.offer(spacers, 0, result);
    return result;
}

Size measure(const LayoutNode& node, const Proposal& proposal, Typesetter& typesetter) {
    for (const LayoutNode::Answer& answer : node.answers)
        if (answer.proposal == proposal) return answer.size;
    const Size size = std::visit(Measurer{node, proposal, typesetter}, node.kind);
    node.answers.push_back({proposal, size});
    return size;
}

}  // namespace tessary::views
