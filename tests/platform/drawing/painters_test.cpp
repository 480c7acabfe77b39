#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <glib.h>
#include <gtest/gtest.h>
#include <iterator>
#include <set>

#include "platform/drawing/cairo_painter.h"
#include "platform/drawing/json_painter.h"
#include "platform/drawing/png_encoder.h"
#include "platform/drawing/svg_painter.h"
#include "platform/drawing/text_painter.h"
#include "platform/views/layout.h"

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
    return {.size = {164, 100.5},
            .margins = {1, 2, 3, 4},
            .cornerRadius = 22,
            .scale = 2,
            .background = Color::rgb8(28, 30, 34),
            .colorScheme = views::ColorScheme::dark,
            .url = "a:b?c=\"d\"",
            .elements = {
                {{{16, 16}, {60, 26.25}},
                 true,
                 views::TextElement{"1234",
                                    {"1234"},
                                    digits,
                                    red.withOpacity(0.5),
                                    1,
                                    views::Truncation::middle,
                                    0.5}},
                {{{16, 44}, {90, 26}},
                 false,
                 views::TextElement{odd, {"<b>&\"it\u2026", "]]>"}, Font::system(11), blue}},
                {{{16, 70}, {20, 20}},
                 false,
                 views::TextElement{"\U0001F525", {"\U0001F525"}, Font::system(16), blue}},
                {{{80, 16}, {26, 26}},
                 true,
                 views::SymbolElement{"bell.slash", Font::system(22, views::Weight::medium), red}},
                {{{110, 16}, {1, 60.5}}, false, views::RectangleElement{blue.withOpacity(0.25)}},
                {{{120, 16}, {20, 10}}, false, views::CircleElement{red}},
                {{{120, 30}, {20, 10}}, false, views::PathElement{line, dashed}},
                {{{120, 50}, {20, 10}},
                 false,
                 views::PathElement{line, views::Fill{{red, blue.withOpacity(0)}}}},
            }};
}

PangoTypesetter& typesetter() {
    static PangoTypesetter shared{"en_US"};
    return shared;
}

TEST(Painters, GiveTheSameBytesAgain) {
    const DisplayList list = everything();
    const auto all = [&](PangoTypesetter& type) {
        return std::vector{encodePNG(paintPixels(list, type)), paintSVG(list, type),
                           paintPDF(list, type, moment), paintJSON(list, {"alarms", {}, moment}),
                           paintText(list)};
    };
    PangoTypesetter fresh{"en_US"};
    const auto first = all(fresh);
    EXPECT_EQ(all(fresh), first);
    EXPECT_EQ(all(typesetter()), first);
}

TEST(JSONPainter, PrintsEveryElement) {
    namespace fs = std::filesystem;
    const std::string received =
        paintJSON(everything(), {"alarms", views::WidgetFamily::systemMedium, moment});
    const fs::path stored = fs::path{TESSARY_GOLDENS} / "everything.json";
    std::ifstream file{stored};
    if (std::string{std::istreambuf_iterator<char>{file}, {}} == received) return;
    const fs::path written = fs::temp_directory_path() / "everything.json";
    std::ofstream{written} << received;
    ADD_FAILURE() << "differs from what is stored; to look and to accept it:\n  diff " << stored
                  << " " << written << "\n  cp " << written << " " << stored;
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
}

/// What a reader of XML finds in a document.
struct Markup {
    explicit Markup(const std::string& document) {
        static constexpr GMarkupParser parser{
            [](GMarkupParseContext*, const char* name, const char** keys, const char** values,
               void* self, GError**) {
                auto& found = *static_cast<Markup*>(self);
                found.names.insert(name);
                for (; *keys != nullptr; ++keys, ++values) {
                    const bool id = std::string_view{*keys} == "id";
                    EXPECT_TRUE(!id || found.ids.insert(*values).second);
                    if (std::string_view{*values}.starts_with("url(#"))
                        found.references.insert(
                            std::string{*values}.substr(5, std::string_view{*values}.size() - 6));
                }
            },
            nullptr,
            [](GMarkupParseContext*, const char* part, gsize length, void* self, GError**) {
                static_cast<Markup*>(self)->text.append(part, length);
            },
            nullptr, nullptr};
        GMarkupParseContext* context =
            g_markup_parse_context_new(&parser, G_MARKUP_TREAT_CDATA_AS_TEXT, this, nullptr);
        GError* error = nullptr;
        wellFormed =
            g_markup_parse_context_parse(context, document.data(),
                                         static_cast<gssize>(document.size()), &error) != 0 &&
            g_markup_parse_context_end_parse(context, &error) != 0;
        EXPECT_TRUE(wellFormed) << (error != nullptr ? error->message : "");
        g_clear_error(&error);
        g_markup_parse_context_free(context);
    }
    std::set<std::string> names{}, ids{}, references{};
    std::string text{};
    bool wellFormed{};
};

TEST(SVGPainter, WritesWellFormedXML) {
    const std::string document = paintSVG(everything(), typesetter(), "card7-");
    const Markup svg{document};
    EXPECT_NE(svg.text.find("1234\n<b>&\"it's\"  [31m"), std::string::npos) << svg.text;
    for (const char c : document) EXPECT_TRUE(c == '\n' || c < 0 || c >= ' ');
    for (const std::string refused : {"\uFFFE", "\uFFFF", "]]>"})  // XML has no place for them
        EXPECT_EQ(document.find(refused), std::string::npos);
    for (const std::string& id : svg.ids) EXPECT_TRUE(id.starts_with("card7-")) << id;
    EXPECT_EQ(svg.ids, svg.references);
    EXPECT_EQ(svg.names, (std::set<std::string>{"svg", "title", "path", "image", "clipPath", "rect",
                                                "circle", "linearGradient", "stop"}));
}

TEST(PDFPainter, DatesADocumentAsItIsTold) {
    const auto date = [](const std::string& document) {
        const auto at = document.find("/CreationDate (");
        EXPECT_EQ(document.find("Date"), at + 9);  // and no other
        return document.substr(at, document.find(')', at) - at);
    };
    const std::string document = paintPDF(everything(), typesetter(), moment);
    EXPECT_TRUE(document.starts_with("%PDF-"));
    EXPECT_NE(document.find("/MediaBox [ 0 0 164 100.5 ]"), std::string::npos);
    EXPECT_NE(date(document).find("20241116160000"), std::string::npos);
    const auto dated = [&](double seconds) {
        return date(paintPDF({.size = {1, 1}}, typesetter(), {seconds}));
    };
    EXPECT_NE(dated(-1e300).find("19700101000000"), std::string::npos);
    EXPECT_NE(dated(1e300).find("99991231235959"), std::string::npos);
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
            const DisplayList list =
                layOut(row, {.size = {20, 4}, .scale = scale}, {}, typesetter());
            const Pixels pixels = paintPixels(list, typesetter());
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

TEST(CairoPainter, PaintsACardClearOutsideItsCorners) {
    const Pixels pixels = paintPixels(
        {.size = {60, 40}, .cornerRadius = 10, .scale = 1.5, .background = red}, typesetter());
    ASSERT_EQ((std::pair{pixels.width, pixels.height}), (std::pair{90, 60}));
    EXPECT_EQ(at(pixels, 0, 0), 0U);
    for (int y = 0; y < 60; ++y) {
        EXPECT_EQ(at(pixels, 45, y), 0xFFFF0000);
        for (int x = 0; x < 90; ++x) {
            const auto alpha = [&](int px, int py) {
                return static_cast<int>(at(pixels, px, py) >> 24U);
            };
            EXPECT_NEAR(alpha(x, y), alpha(89 - x, y), 20);
            EXPECT_NEAR(alpha(x, y), alpha(x, 59 - y), 20);
        }
    }
}

TEST(CairoPainter, PutsInkWhereTheListSays) {
    const auto painted = [](const Rect& frame, const views::ElementContent& content) {
        return paintPixels({.size = {40, 30}, .elements = {{frame, false, content}}}, typesetter());
    };
    const Pixels circle = painted({{10, 10}, {20, 10}}, views::CircleElement{red});
    for (int x = 0; x < 40; ++x) {
        for (int y = 0; y < 30; ++y) {
            const double inside = 5 - std::hypot(x + 0.5 - 20, y + 0.5 - 15);
            const std::uint32_t edge = at(circle, x, y);
            EXPECT_EQ(edge, inside > 0.8 ? 0xFFFF0000 : inside < -0.8 ? 0 : edge) << x << "," << y;
        }
    }
    const Pixels gradient =
        painted({{0, 5}, {40, 20}},
                views::PathElement{Path{}.rectangle({{0, 0}, {40, 20}}), views::Fill{{red, blue}}});
    EXPECT_EQ(at(gradient, 20, 4), 0U);
    for (int y = 5; y < 25; ++y) {
        const double part = (y + 0.5 - 5) / 20;
        EXPECT_NEAR(at(gradient, 20, y) >> 16U & 0xFFU, 255 * (1 - part), 2) << y;
        EXPECT_NEAR(at(gradient, 20, y) & 0xFFU, 255 * part, 2) << y;
    }

    const Font rounded = Font::system(24, views::Weight::semibold, views::FontDesign::rounded);
    const Pixels text = painted({{4, 0}, {30, 29}},
                                views::TextElement{"88", {"88"}, rounded, red.withOpacity(0.5)});
    const auto darkest = *std::max_element(text.values.begin(), text.values.end());
    EXPECT_NEAR(darkest >> 24U, 128, 1);  // its strokes and fills do not add up
}

}  // namespace
}  // namespace tessary::drawing
