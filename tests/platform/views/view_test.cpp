#include "platform/views/view.h"

#include <gtest/gtest.h>

#include "platform/views/even_typesetter.h"
#include "platform/views/layout.h"
#include "support/dump.h"
#include "support/golden.h"

namespace tessary::views {
namespace {

constexpr Color red = Color::rgb8(255, 0, 0);
constexpr Color blue = Color::rgb8(0, 0, 255);
constexpr auto centred = Alignment::center;

struct Greeting {
    View body() const { return Text("Hello"); }
};

struct TitleFirst {
    View body(const View& icon, const View& title) const {
        return HStack(centred, 1, {title, icon});
    }
};
struct TitleOnly {
    View body(const View&, const View& title) const { return title; }
};

/// Records that wait for their room; all that tells the second from the first is its type.
struct Room {
    View content{};
    View body(const Size&) const { return content; }
    bool operator==(const Room&) const = default;
};
struct OtherRoom : Room {};

/// Shown where the line limit around is 2.
struct Limited {
    View content{};
    View body(const Environment& around) const { return around.lineLimit == 2 ? content : View{}; }
    bool operator==(const Limited&) const = default;
};

/// Views that differ from one another in one thing each.
std::vector<View> differing() {
    const View text = Text("a");
    return {View{},
            text,
            Text("b"),
            Label("a", "b"),
            Group({text}),
            Group({text, text}),
            HStack(centred, 1, {text}),
            VStack(centred, 1, {text}),
            HStack(centred, 1, {Text("b")}),
            ZStack(centred, {text}),
            Room{text},
            Room{View{}},
            OtherRoom{{text}},
            View{Greeting{}},
            text.labelStyle(TitleFirst{}),
            text.labelStyle(TitleOnly{}),
            text.padding({1, 2, 3, 4}),
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

TEST(View, MayBeAssignedWhatHoldsIt) {
    View view = HStack(centred, 1, {Text("a")});
    const View original = view;
    view = view.padding({});
    EXPECT_EQ(view, original.padding({}));
    EXPECT_NE(view, original);
    EXPECT_EQ(when(true, [] { return Text("a"); }), Text("a"));
    EXPECT_EQ(when(false, [] { return Text("a"); }), View{});
}

DisplayList listed(const View& view) {
    EvenTypesetter typesetter;
    return layOut(view, {.size = {100, 100}}, {.font = plain, .foreground = red}, typesetter);
}

TEST(View, InheritsFromTheViewsAround) {
    const View text = Text("a"), label = Label("ab", "bell");
    const Font rounded{9, Weight::medium, FontDesign::rounded};
    const View inner =
        text.containerBackground(blue).widgetURL("in:").colorScheme(ColorScheme::light);
    const View around = VStack(centred, 0, {inner.widgetURL("side:"), inner}).padding({});
    const View content = HStack(centred, 1, {Text("abc"), Image("bell"), Circle()});
    const View path = Group({PaintedPath({}, Stroke{blue}), PaintedPath({}, Fill{{blue, red}})});
    const std::pair<const char*, View> cases[] = {
        {"as around", Group({text})},
        {"font", VStack(centred, 0, {text.font(rounded)}).font(plain)},
        {"weight and digits",
         ZStack(centred, {text.font(rounded)}).weight(Weight::semibold).monospacedDigits()},
        {"inner weight", text.weight(Weight::semibold).weight(Weight::medium).font(rounded)},
        {"opacities", text.opacity(0.5).foreground(blue).opacity(0.25)},
        {"inner limit", text.truncation(Truncation::middle).lineLimit(3).lineLimit(1)},
        {"least limit", text.lineLimit(0)},
        {"read", View{Limited{text}}.lineLimit(2)},
        {"below a reader", View{Room{text}}.foreground(blue)},
        {"shrinking", Text("1234567890").frame(FixedFrame{40, 11}).minimumScale(0.7)},
        {"faded shapes", Group({Rectangle(), Rectangle(blue), path}).opacity(0.5)},
        {"label", label.weight(Weight::semibold)},
        {"label style", VStack(centred, 0, {label}).labelStyle(TitleFirst{})},
        {"inner label style", label.labelStyle(TitleOnly{}).labelStyle(TitleFirst{})},
        {"accent", Group({Circle(), Group({text, Circle()}).accentable(), Image("b")})},
        {"outermost preferences",
         around.containerBackground(red).widgetURL("out:").colorScheme(ColorScheme::dark)},
        {"first preferences", Group({inner, Text("b").widgetURL("late:")})},
        {"hidden behind blocks", content.redacted({.placeholder = true})},
        {"shown all the same", content.unredacted().redacted({.placeholder = true})},
        {"nothing private", content.redacted({.privacy = true})}};
    std::string dump;
    for (const auto& [heading, view] : cases)
        dump += std::string{"== "} + heading + '\n' + Dump{listed(view)}.text();
    expectGolden("inherited.txt", dump);
}

}  // namespace
}  // namespace tessary::views
