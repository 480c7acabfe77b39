#include "platform/views/view.h"

#include <gtest/gtest.h>

#include "platform/views/even_typesetter.h"
#include "platform/views/layout.h"

namespace tessary::views {
namespace {

using namespace std::string_literals;

constexpr Color red = Color::rgb8(255, 0, 0);
constexpr Color blue = Color::rgb8(0, 0, 255);
constexpr auto centred = Alignment::center;

struct Greeting {
    std::string name{};
    View body() const { return Text("Hello " + name).weight(Weight::semibold); }
};

struct TitleFirst {
    View body(const View& icon, const View& title) const {
        return HStack(centred, 1, {title, icon});
    }
};
struct TitleOnly {
    View body(const View&, const View& title) const { return title; }
};

/// Views that differ from one another in one thing each.
std::vector<View> differing() {
    const auto first = [](const int& n, const Size&) { return Text(std::to_string(n)); };
    const auto second = [](const int&, const Size&) { return View{}; };
    const View text = Text("a");
    return {View{},
            text,
            Text("b"),
            Label("a", "b"),
            Label("b", "a"),
            Group({text}),
            Group({text, text}),
            HStack(centred, 1, {text}),
            VStack(centred, 1, {text}),
            HStack(Alignment::top, 1, {text}),
            HStack(centred, 2, {text}),
            HStack(centred, 1, {Text("b")}),
            ZStack(centred, {text}),
            ZStack(Alignment::top, {text}),
            GeometryReader(1, +first),
            GeometryReader(2, +first),
            GeometryReader(1, +second),
            View{Greeting{"Ada"}},
            View{Greeting{"Bob"}},
            text.labelStyle(TitleFirst{}),
            text.labelStyle(TitleOnly{}),
            text.padding({1, 2, 3, 4}),
            text.padding({1, 2, 4, 3}),
            text.weight(Weight::medium).lineLimit(1),
            text.lineLimit(1).weight(Weight::medium)};
}

TEST(View, EqualsItsLikeAndNothingElse) {
    const std::vector<View> views = differing();
    std::vector<View> like = differing();
    const std::vector<View> copies = like;
    like.clear();
    for (std::size_t i = 0; i < views.size(); ++i)
        for (std::size_t k = 0; k < views.size(); ++k)
            EXPECT_EQ(views[i] == copies[k], i == k) << i << " and " << k;
}

TEST(View, IsLeftAsItWasByModifiersAndAssignment) {
    const View original = HStack(
        centred, 1, {Text("a"), GeometryReader(1, [](const int&, const Size&) { return View{}; })});
    View other = original.padding(EdgeInsets::all(1));
    EXPECT_NE(other, original);
    View moved = std::move(other);
    other = original;
    EXPECT_EQ(other, original);
    EXPECT_EQ(moved, original.padding(EdgeInsets::all(1)));
    moved = moved.padding({});  // assigned from what holds itself
    EXPECT_EQ(moved, original.padding(EdgeInsets::all(1)).padding({}));
    EXPECT_EQ(when(true, [] { return Text("a"); }), Text("a"));
    EXPECT_EQ(when(false, [] { return Text("a"); }), View{});
}

DisplayList listed(const View& view) {
    EvenTypesetter typesetter;
    return layOut(view, {.size = {100, 100}}, {.font = plain, .foreground = red}, typesetter);
}
template <class Content>
std::vector<Content> all(const View& view) {
    std::vector<Content> result;
    for (const Element& element : listed(view).elements)
        if (const auto* content = std::get_if<Content>(&element.content))
            result.push_back(*content);
    return result;
}

TEST(View, InheritsFromTheViewsAround) {
    const View text = Text("a");
    const Font rounded{9, Weight::medium, FontDesign::rounded};
    const Font digits{9, Weight::semibold, FontDesign::rounded, true};
    const auto limit2 = [](const View& v, const Environment& e) {
        return e.lineLimit == 2 ? v : View{};
    };
    const auto content = [](const View& v, const Size&) { return v; };
    const struct {
        View view;
        TextElement expected;
    } cases[] = {
        {Group({text}), {"a", {"a"}, plain, red}},
        {VStack(centred, 0, {text.font(rounded)}).font(plain), {"a", {"a"}, rounded, red}},
        {ZStack(centred, {text.font(rounded)}).weight(Weight::semibold).monospacedDigits(),
         {"a", {"a"}, digits, red}},
        {text.weight(Weight::semibold).weight(Weight::medium).monospacedDigits().font(rounded),
         {"a", {"a"}, digits, red}},
        {text.opacity(0.5).foreground(blue).opacity(0.25),
         {"a", {"a"}, plain, blue.withOpacity(0.125)}},
        {text.truncation(Truncation::middle).lineLimit(3).lineLimit(1),
         {"a", {"a"}, plain, red, 3, Truncation::middle}},
        {text.lineLimit(0), {"a", {"a"}, plain, red, 1}},
        {EnvironmentReader(text, +limit2).lineLimit(2), {"a", {"a"}, plain, red, 2}},
        {GeometryReader(text, +content).foreground(blue), {"a", {"a"}, plain, blue}},
        {Text("1234567890").frame(FixedFrame{40, 11}).minimumScale(0.7),
         {"1234567890", {"1234567890"}, plain, red, {}, Truncation::tail, 0.8}},
    };
    for (const auto& [view, expected] : cases)
        EXPECT_EQ(all<TextElement>(view), std::vector{expected})
            << expected.text << &view - &cases[0].view;

    const View shapes = Group({Rectangle(), Rectangle(blue)}).opacity(0.5);
    EXPECT_EQ(all<RectangleElement>(shapes),
              (std::vector<RectangleElement>{{red.withOpacity(0.5)}, {blue.withOpacity(0.5)}}));
    const auto paths = all<PathElement>(
        Group({PaintedPath({}, Stroke{blue}), PaintedPath({}, Fill{{blue, red}})}).opacity(0.5));
    EXPECT_EQ(paths[0].paint, Paint{Stroke{blue.withOpacity(0.5)}});
    EXPECT_EQ(paths[1].paint, (Paint{Fill{{blue.withOpacity(0.5), red.withOpacity(0.5)}}}));
}

TEST(View, ArrangesLabelsAsTheInheritedStyleSays) {
    const View label = Label("ab", "bell");
    const auto symbolAt = [](const View& view) {
        for (const Element& e :
             listed(view.frame(FlexibleFrame::unbounded(Alignment::topLeading))).elements)
            if (std::holds_alternative<SymbolElement>(e.content)) return e.frame.minX();
        return -1.0;
    };
    EXPECT_EQ(symbolAt(label), 0);
    EXPECT_EQ(symbolAt(VStack(centred, 0, {label}).labelStyle(TitleFirst{})), 11);
    EXPECT_EQ(symbolAt(label.labelStyle(TitleOnly{}).labelStyle(TitleFirst{})), -1);
    EXPECT_EQ(all<SymbolElement>(label.weight(Weight::semibold)),
              (std::vector<SymbolElement>{{"bell", {plain.size, Weight::semibold}, red}}));
}

TEST(View, HidesTextsAndSymbolsBehindBlocksOfTheirSize) {
    const View content = HStack(centred, 1, {Text("abc"), Image("bell"), Circle()});
    const DisplayList bare = listed(content);
    const DisplayList hidden = listed(content.redacted({.placeholder = true}));
    ASSERT_EQ(hidden.elements.size(), 3U);
    for (std::size_t i = 0; i < 2; ++i) {
        EXPECT_EQ(hidden.elements[i].frame, bare.elements[i].frame);
        EXPECT_EQ(std::get<RectangleElement>(hidden.elements[i].content).color,
                  red.withOpacity(0.25));
    }
    EXPECT_EQ(hidden.elements[2], bare.elements[2]);
    EXPECT_EQ(listed(content.unredacted().redacted({.placeholder = true})), bare);
    EXPECT_EQ(listed(content.redacted({.privacy = true})), bare);
}

TEST(View, PutsAccentableContentIntoTheAccentGroup) {
    const View accented = Group({Text("a"), Circle()}).accentable();
    std::string accents;
    for (const Element& element : listed(Group({Circle(), accented, Image("b")})).elements)
        accents += element.accent ? 'a' : '-';
    EXPECT_EQ(accents, "-aa-");
}

TEST(View, SpeaksForTheWidgetFromItsOutermostPlace) {
    const View inner =
        Text("a").containerBackground(blue).widgetURL("in:").colorScheme(ColorScheme::light);
    const View around = VStack(centred, 0, {inner.widgetURL("side:"), inner}).padding({});
    const DisplayList outer =
        listed(around.containerBackground(red).widgetURL("out:").colorScheme(ColorScheme::dark));
    EXPECT_EQ(std::tuple(outer.background, outer.url, outer.colorScheme),
              std::tuple(std::optional{red}, std::optional{"out:"s}, ColorScheme::dark));
    const DisplayList alone = listed(Group({inner, Text("b")}));
    EXPECT_EQ(std::tuple(alone.background, alone.url, alone.colorScheme),
              std::tuple(std::optional{blue}, std::optional{"in:"s}, ColorScheme::light));
    EXPECT_EQ(listed(Text("a")).background, std::nullopt);
}

}  // namespace
}  // namespace tessary::views
