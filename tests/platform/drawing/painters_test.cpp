#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>

#include "platform/drawing/bounded_list.h"
#include "platform/drawing/cairo_painter.h"
#include "platform/drawing/ink.h"
#include "platform/drawing/json_painter.h"
#include "platform/drawing/png_encoder.h"
#include "platform/drawing/svg_painter.h"
#include "platform/drawing/text_painter.h"
#include "platform/views/layout.h"
#include "support/golden.h"
#include "support/rendering.h"

namespace tessary::drawing {
namespace {

using views::Color;
using views::DisplayList;
using views::Font;
using views::Path;
using views::Rect;

constexpr Color red = Color::rgb8(255, 0, 0);
constexpr Color blue = Color::rgb8(0, 0, 255);
constexpr foundation::Date moment{1731772800};  // 2024-11-16 16:00 UTC

/// One element of every type, and texts that a format might trip over.
DisplayList everything() {
    Path line;
    line.move({0, 5}).line({10, 0}).curve({11, 1}, {12, 2}, {20, 5}).close();
    const views::Stroke dashed{
        red.withOpacity(0.5), 1.5, views::LineCap::round, views::LineJoin::round, 4, {2, 3}, 0.5};
    const Font digits{22, views::Weight::semibold, views::FontDesign::rounded, true};
    const std::string odd = "<b>&\"it's\"\n\x1B[31m\x7F \u009F\uFFFE\uFFFF]]>";
    DisplayList list{.size = {164, 100.5},
                     .margins = {1, 2, 3, 4},
                     .cornerRadius = 22,
                     .scale = 2,
                     .background = Color::rgb8(28, 30, 34),
                     .colorScheme = views::ColorScheme::dark,
                     .url = "a:b?c=\"d\""};
    const auto add = [&](const Rect& frame, const views::ElementContent& content, bool accent) {
        list.elements.push_back({frame, accent, content});
    };
    const auto middle = views::Truncation::middle;
    const Font medium = Font::system(22, views::Weight::medium);
    add({{16, 16}, {60, 26.25}},
        views::TextElement{"1234", {"1234"}, digits, red.withOpacity(0.5), 1, middle, 0.5}, true);
    add({{16, 44}, {90, 26}},
        views::TextElement{odd, {"<b>&\"it\u2026", "]]>"}, Font::system(11), blue}, false);
    add({{16, 70}, {20, 20}},
        views::TextElement{"\U0001F525", {"\U0001F525"}, Font::system(16), blue}, false);
    add({{80, 16}, {26, 26}}, views::SymbolElement{"bell.slash", medium, red}, true);
    add({{110, 16}, {1, 60.5}}, views::RectangleElement{blue.withOpacity(0.25)}, false);
    add({{120, 16}, {20, 10}}, views::CircleElement{red}, false);
    add({{120, 30}, {20, 10}}, views::PathElement{line, dashed}, false);
    const views::Fill gradient{{red, blue.withOpacity(0)}};
    add({{120, 50}, {20, 10}}, views::PathElement{line, gradient}, false);
    return list;
}

TEST(JSONPainter, PrintsEveryElement) {
    expectGolden("everything.json",
                 paintJSON(everything(), {"alarms", views::WidgetFamily::systemMedium, moment}));
}

TEST(TextPainter, PrintsALineForEachTextWithoutControls) {
    EXPECT_EQ(paintText(everything()), "1234\n<b>&\"it's\"  [31m   \uFFFE\uFFFF]]>\n\U0001F525");
    DisplayList list;
    EXPECT_EQ(paintText(list), "");
    std::string controls, shown(33, ' ');
    for (char c = 0; c < ' '; ++c) controls += c;
    shown += "\u00A0\u00E9";
    list.elements = {{{}, false, views::TextElement{""}},
                     {{}, false, views::TextElement{controls + "\u0080\u00A0\u00E9"}}};
    EXPECT_EQ(paintText(list), shown);
    // A mark that reorders ends with its text, and ends nothing that stands before it.
    for (const auto& [text, painted] : std::vector<std::pair<std::string, std::string>>{
             {"a\u202Eb", "a\u202Eb\u202C"},
             {"\u202A\u202B\u202D\u202C", "\u202A\u202B\u202D\u202C\u202C\u202C"},
             {"\u2066\u202A\u2067\u2068", "\u2066\u202A\u2067\u2068\u2069\u2069\u202C\u2069"},
             {"\u2067a\u2069 b", "\u2067a\u2069 b"},
             {"\u202Ba\u202C b", "\u202Ba\u202C b"},
             {"\u2069a\u202C", "a"},
             {"\u2066\u202Ea\u2069b\u202C", "\u2066\u202Ea\u2069b"},
             {"\u202E\u2066\u202C\u2069", "\u202E\u2066\u2069\u202C"}}) {
        list.elements = {{{}, false, views::TextElement{text}}};
        EXPECT_EQ(paintText(list), painted);
    }
}

/// Long values, outlines of letters and pictures, are left out. Well-formed it is where the host's
/// tests parse it.
TEST(SVGPainter, WritesEveryElement) {
    const std::string document = paintSVG(everything(), realType(), "card7-");
    std::string brief;
    for (std::size_t at = 0, end = 0; at < document.size(); at = end + 1) {
        end = std::min(document.find('"', at), document.size());
        brief += end - at > 300 ? "..." : document.substr(at, end - at);
        if (end < document.size()) brief += '"';
    }
    expectGolden("everything.svg", brief);
}

TEST(PDFPainter, DatesADocumentAsItIsTold) {
    for (const auto& [seconds, date] : {std::pair{moment.seconds, "20241116160000"},
                                        {-1e300, "19700101000000"},
                                        {1e300, "99991231235959"}}) {
        const std::string document = paintPDF(everything(), realType(), {seconds});
        EXPECT_TRUE(document.starts_with("%PDF-"));
        EXPECT_NE(document.find("/MediaBox [ 0 0 164 100.5 ]"), std::string::npos);
        const auto at = document.find("/CreationDate (");
        ASSERT_NE(at, std::string::npos);
        EXPECT_NE(document.substr(at, 36).find(date), std::string::npos) << date;
        EXPECT_EQ(document.find("Date"), at + 9) << "and no other";
        EXPECT_EQ(document.find("Date", at + 10), std::string::npos);
    }
}

TEST(BoundedList, HoldsNoMoreThanACardCanShow) {
    views::TextElement text{.text = std::string(longestText - 1, 'x')};
    DisplayList list{.url = std::string(longestLink, 'u'), .elements = {{{}, false, text}}};
    const DisplayList whole = list;
    bound(list);
    EXPECT_EQ(list, whole);
    list = {.url = *list.url + "u", .elements = {{{}, false, text}}};
    std::get<views::TextElement>(list.elements[0].content).text += "\u20AC";
    bound(list);
    EXPECT_EQ(std::get<views::TextElement>(list.elements[0].content).text, text.text + "\u2026");
    EXPECT_EQ(list.url, std::nullopt);
}

// ---- Pixels -----------------------------------------------------------------------------------

std::uint32_t at(const Pixels& pixels, int x, int y) {
    return pixels.values.at(static_cast<std::size_t>(y * pixels.width + x));
}

TEST(CairoPainter, DrawsALineOfOnePointCrisplyAtEveryScale) {
    const views::View line = views::Rectangle(red).frame(views::FixedFrame{.width = 1});
    for (double scale = 1; scale <= 4; scale += 0.25) {
        for (double before = 0; before < 3; before += 0.3) {
            const views::View row =
                HStack(views::Alignment::top, 0, {views::Spacer(before), line, views::Spacer()});
            const DisplayList list = layOut(row, {.size = {20, 4}, .scale = scale}, {}, realType());
            const Pixels pixels = paintPixels(list, realType());
            int columns = 0;
            for (int x = 0; x < pixels.width; ++x) {
                for (int y = 1; y < pixels.height; ++y)
                    ASSERT_EQ(at(pixels, x, y), at(pixels, x, 0));
                columns += at(pixels, x, 0) == 0xFFFF0000;
                ASSERT_TRUE(at(pixels, x, 0) == 0 || at(pixels, x, 0) == 0xFFFF0000) << scale;
            }
            ASSERT_TRUE(columns == std::floor(scale) || columns == std::ceil(scale)) << scale;
        }
    }
}

TEST(CairoPainter, PutsInkWhereTheListSays) {
    DisplayList list = everything();
    list.background.reset();
    list.elements.erase(list.elements.begin(), list.elements.begin() + 3);  // the texts
    const DisplayList card{.size = {60, 40}, .cornerRadius = 10, .scale = 1.5, .background = red};
    expectGolden("everything_ink.txt", inked(paintPixels(list, realType())) + "== card\n" +
                                           inked(paintPixels(card, realType())));
}

TEST(CairoPainter, FadesATextAsAWhole) {
    const Font rounded = Font::system(24, views::Weight::semibold, views::FontDesign::rounded);
    const views::TextElement digits{"88", {"88"}, rounded, red.withOpacity(0.5)};
    const Pixels text = paintPixels(
        {.size = {40, 30}, .elements = {{{{4, 0}, {30, 29}}, false, digits}}}, realType());
    const auto darkest = *std::max_element(text.values.begin(), text.values.end());
    EXPECT_NEAR(darkest >> 24U, 128, 1);  // its strokes and fills do not add up
}

}  // namespace
}  // namespace tessary::drawing
