#include "platform/views/layout.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

#include "platform/views/even_typesetter.h"
#include "support/dump.h"
#include "support/golden.h"

namespace tessary::views {
namespace {

constexpr double none = -1;  // no length is offered
constexpr auto centred = Alignment::center;

/// The view as its parent sees it: offered a width and a height, put at a point, nothing rounded.
PlacedNode placed(const View& view, double width, double height, Point origin = {}) {
    EvenTypesetter typesetter;
    Preferences preferences;
    const auto offer = [](double length) {
        return length < 0 ? Offer::unspecified() : Offer::points(length);
    };
    const auto nodes = resolve(view, {.font = plain}, preferences);
    return place(nodes.at(0), origin, {offer(width), offer(height)}, typesetter, PixelGrid{1});
}

View H(double spacing, std::vector<View> views) {
    return HStack(centred, spacing, std::move(views));
}
View V(double spacing, std::vector<View> views) {
    return VStack(centred, spacing, std::move(views));
}
View box(double width, double height) { return Rectangle().frame(FixedFrame{width, height}); }

const View t1 = Text("1"), t8 = Text("12345678"), t12 = Text("123456789012");
const View t24 = Text("123456789012345678901234");
const View rectangle = Rectangle(), line = rectangle.frame(FixedFrame{.width = 1});
struct Reader {
    View body(const Size& size) const {
        return V(0, {Rectangle(), box(size.width / 4, size.height / 5)});
    }
    bool operator==(const Reader&) const = default;
};
const View reader = Reader{};

TEST(Layout, FollowsTheWorkedExamples) {
    const auto wide = FlexibleFrame::unboundedWidth(centred);
    const View atMost = rectangle.frame(FlexibleFrame{.maxWidth = 100});
    const View atLeast = rectangle.frame(FlexibleFrame{.minWidth = 100});
    const View words = Text("12 45 78"), padded = rectangle.padding({1, 2, 3, 4});
    const View pair = Group({t1, t1});
    using A = Alignment;
    const struct {
        View view;
        double width, height;
    } examples[] = {
        {H(0, {rectangle, rectangle, rectangle}), 300, 100},
        {H(0, {atMost, atLeast}), 150, 20},
        {H(0, {atMost, atLeast}).frame(FixedFrame{150}), 9, 20},
        {H(0, {t8, Spacer(), t12}), 200, 30},
        {t8.frame(wide), 200, none},
        {t8.frame(wide), none, none},
        {t24.fixedSize(true, true).frame(wide), 100, none},
        {box(80, 80).frame(FixedFrame{50, 50}), 200, 200},
        {line, none, 40},
        {line, none, none},
        {Circle().frame(FixedFrame{20, 10}), 7, 7},
        {t24.fixedSize(true, false), 60, 11},
        {Text("123456 89012 4567").fixedSize(false, true), 60, 10},
        {V(10, {t1, View{}, t1}), none, none},
        {reader, 100, 50},
        {reader, none, none},
        {ZStack(centred, {box(40, 20), box(30, 60)}), 9, 9},
        {H(0, {rectangle, t8}), 100, 30},  // the text first
        {H(0, {words, words}), 45, none},  // in source order
        {HStack(A::top, 7, {box(60, 5), rectangle, box(60, 5)}), 100, 20},
        {H(3, {t8, rectangle, Spacer()}), none, none},
        {HStack(A::bottom, 0, {line, Spacer(13), box(2, 3)}), 9, 4},
        {H(0, {rectangle, Spacer(13), rectangle}), 99, 4},
        {VStack(A::trailing, 2, {t1, Group({Spacer(4), t8})}), 50, 60},
        {Spacer(), 30, 20},
        {H(2, {pair, Text(""), View{}, V(0, {})}), none, none},
        {ZStack(A::bottomTrailing, {rectangle, t8}), 100, 50},
        {t8.frame(FixedFrame{.width = 99, .alignment = A::trailing}), 9, 50},
        {t8.frame(FixedFrame{.height = 31, .alignment = A::bottom}), 25, none},
        {t8.frame(FlexibleFrame{.minWidth = 50}), 30, none},
        {t1.frame(FlexibleFrame::unbounded(A::bottomTrailing)), 50, 30},
        {padded, 20, 20},
        {padded, none, none},
        {padded, 5, 5},
        {V(0, {pair.padding(EdgeInsets::all(1))}), none, none},
        {Image("bell"), 3, 3},
        {H(0, {reader, reader, reader}), 100, 10},  // which learn the sizes that are drawn
    };
    std::string text;
    for (const auto& [view, width, height] : examples)
        text += "offered " + std::to_string(std::lround(width)) + " x " +
                std::to_string(std::lround(height)) + '\n' + dump(placed(view, width, height));
    expectGolden("examples.txt", text);
}

TEST(Layout, AsksEachTextOnlyAFewTimesHoweverDeepItStands) {
    View nested = t8;
    for (int level = 0; level < 7; ++level) nested = H(1, {nested, line});
    EvenTypesetter typesetter;
    layOut(nested, {.size = {164, 164}}, {.font = plain}, typesetter);
    EXPECT_LT(typesetter.questions, 200U);
}

// ---- A tree like a real widget's, at every width ----------------------------------------------

View columns() {
    const auto text = [](const char* content) { return Text(content).lineLimit(1); };
    const View count = H(6, {Image("check"), text("1234567").minimumScale(0.5)});
    const View summary =
        VStack(Alignment::leading, 0, {t12, Spacer(4), count, Spacer(4), text("12 watched")});
    const View names =
        VStack(Alignment::leading, 1,
               {text("orders-queue-age").truncation(Truncation::middle), text("eu-west-1 firing")});
    const View bar = H(0, {rectangle, rectangle.padding(EdgeInsets::all(0.3)), rectangle});
    const View list = VStack(
        Alignment::leading, 7,
        {H(6, {Circle().frame(FixedFrame{7, 7}), names}), bar.frame(FixedFrame{.height = 3})});
    return HStack(Alignment::top, 14,
                  {summary.frame(FixedFrame{.width = 118, .alignment = Alignment::leading}), line,
                   list.frame(FlexibleFrame::unboundedWidth(Alignment::leading))});
}

constexpr double listStart = 118 + 14 + 1 + 14;

/// Checks a stack's gaps before (`exact`) and after rounding against those of its ideal layout.
void expectGaps(const PlacedNode& exact, const PlacedNode& snapped, const PlacedNode& ideal,
                double scale) {
    const bool across = exact.kind == "HStack";
    const auto gap = [&](const PlacedNode& node, std::size_t i) {
        const Rect& a = node.children[i - 1].frame;
        const Rect& b = node.children[i].frame;
        return across ? b.minX() - a.maxX() : b.minY() - a.maxY();
    };
    for (std::size_t i = 1; i < exact.children.size(); ++i) {
        const double wanted = gap(ideal, i);
        ASSERT_NEAR(gap(exact, i), wanted, 1e-9);
        ASSERT_GE(gap(snapped, i), -1e-9);
        const bool kept = wanted == 0 || std::floor(scale) == scale;
        ASSERT_NEAR(gap(snapped, i), kept ? wanted : gap(snapped, i), 1e-9) << "scale " << scale;
    }
}

void expectOnPixels(const Rect& exact, const Rect& snapped, double scale) {
    for (const auto edge : {&Rect::minX, &Rect::maxX, &Rect::minY, &Rect::maxY}) {
        const double pixels = (snapped.*edge)() * scale;
        ASSERT_NEAR(pixels, std::round(pixels), 1e-9) << "scale " << scale;
        ASSERT_NEAR(pixels, (exact.*edge)() * scale, 0.5 + 1e-5) << "scale " << scale;
    }
}

void expectSound(const PlacedNode& exact, const PlacedNode& snapped, const PlacedNode& ideal,
                 double scale) {
    expectOnPixels(exact.frame, snapped.frame, scale);
    if (exact.kind == "HStack" || exact.kind == "VStack") expectGaps(exact, snapped, ideal, scale);
    for (std::size_t i = 0; i < exact.children.size(); ++i)
        expectSound(exact.children[i], snapped.children[i], ideal.children[i], scale);
}

TEST(Layout, IsSoundAtEveryWidthAndScale) {
    const View view = columns();
    const PlacedNode ideal = placed(view, none, none);
    for (int width = 0; width <= 400; ++width) {
        SCOPED_TRACE(width);
        const Point origin{width / 7.0, 0.1};
        const PlacedNode exact = placed(view, width, 132, origin);
        ASSERT_EQ(exact, placed(columns(), width, 132, origin));
        for (const double scale : {1.0, 1.25, 1.5, 2.0, 3.0})
            expectSound(exact, rounded(exact, PixelGrid{scale}), ideal, scale);

        const double list = exact.children[2].frame.size.width;
        const double roomForRows = 7 + 6 + 5;  // a dot, a gap and an ellipsis
        ASSERT_NEAR(list, std::max(width - listStart, roomForRows), 1e-9);
    }
}

TEST(Layout, PrintsTreesAndWhatIsDrawnInPaintOrderAmidTheCard) {
    const View label = Label("a\nb", "bell").padding(EdgeInsets::all(2)).fixedSize(true, true);
    std::string text = dump(rounded(placed(columns(), 220, 100, {16, 16}), PixelGrid{2})) +
                       dump(placed(ZStack(centred, {reader, label}), 50, 40));
    EvenTypesetter typesetter;
    const Surface card{{164, 164}, {10, 20, 30, 40}, 22, 2};
    const View view = ZStack(centred, {Rectangle(), H(0, {t1, Spacer(6)})}).fixedSize(true, true);
    for (const View& each : {view, columns(), ZStack(centred, {reader, label})})
        text += Dump{layOut(each, card, {.font = plain}, typesetter)}.text();
    expectGolden("layout.txt", text);
    const DisplayList list = layOut(view, card, {.font = plain}, typesetter);
    EXPECT_EQ((std::tuple{list.size, list.margins, list.cornerRadius, list.scale}),
              (std::tuple{card.size, card.margins, 22.0, 2.0}));
}

TEST(Proposal, OffersNothingInsteadOfWhatIsNoLength) {
    const double notANumber = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(Proposal::points(notANumber, -3), Proposal::points(0, 0));
}

}  // namespace
}  // namespace tessary::views
