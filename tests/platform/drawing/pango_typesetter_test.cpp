#include "platform/drawing/pango_typesetter.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>

#include "platform/foundation/utf8.h"
#include "platform/views/text_fitting.h"
#include "support/golden.h"
#include "support/rendering.h"

namespace tessary::drawing {
namespace {

using views::Cluster;
using views::Font;
using views::FontDesign;
using views::Weight;

constexpr auto weights = {Weight::regular, Weight::medium, Weight::semibold};
constexpr auto designs = {FontDesign::standard, FontDesign::rounded};
constexpr const char* family = "\U0001F469\u200D\U0001F469\u200D\U0001F467";
/// Of many scripts.
const std::vector<std::string> names = [] {
    std::vector<std::string> lines;
    std::ifstream in{storedGolden("names.txt", __FILE__)};
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    return lines;
}();

TEST(PangoTypesetter, CutsALineIntoWholeCharactersThatAddUpToIt) {
    ASSERT_FALSE(names.empty());
    for (const std::string& name : names) {
        for (const FontDesign design : designs) {
            const Font font = Font::system(44, Weight::semibold, design);
            for (const GlyphRun& run : realType().line(name, font).runs)
                for (const Glyph& glyph : run.glyphs) EXPECT_NE(glyph.index, 0U) << name;
            std::size_t next = 0;
            double sum = 0;
            for (const Cluster& cluster : realType().clusters(name, font)) {
                const std::string character = name.substr(next, cluster.length);
                EXPECT_EQ(cluster.start, next) << name;
                EXPECT_TRUE(cluster.length > 0 && foundation::isUTF8(character)) << name;
                EXPECT_EQ(cluster.space,
                          character == " " || character == "\u00A0" || character == "\u202F")
                    << name;
                next += cluster.length;
                sum += cluster.advance;
            }
            EXPECT_EQ(next, name.size());
            const double whole = realType().width(name, font);
            EXPECT_NEAR(sum, whole, 0.02 * sum) << name;
            for (const double size : {5.0, 13.0, 100.0})
                EXPECT_NEAR(realType().width(name, Font::system(size, Weight::semibold, design)),
                            whole * size / 44, 0.01 * whole * size / 44)
                    << name;
        }
    }
    EXPECT_EQ(realType().clusters(family, {}).size(), 1U);
    EXPECT_EQ(realType().clusters("e\u0301\U0001F1E9\U0001F1EA", {}).size(), 2U);
    EXPECT_TRUE(realType().clusters("", {}).empty());
}

/// One width but for the typeface's own rounding, a thousandth of its size.
TEST(PangoTypesetter, GivesMonospacedDigitsOneWidth) {
    for (const Weight weight : weights) {
        for (const FontDesign design : designs) {
            Font font = Font::system(44, weight, design);
            const double proportional = realType().width("1", font);
            font.monospacedDigits = true;
            const double digit = realType().width("0", font);
            EXPECT_LT(proportional, 0.95 * digit);
            for (char c = '1'; c <= '9'; ++c)
                EXPECT_NEAR(realType().width(std::string(1, c), font), digit, 0.05);
            EXPECT_NEAR(realType().width("2718", font), 4 * digit, 0.2);
        }
    }
}

TEST(PangoTypesetter, SetsCapitalsAsTallAsTheSystemFonts) {
    for (const Weight weight : weights) {
        for (const FontDesign design : designs) {
            const Font font = Font::system(100, weight, design);
            const GlyphRun& run = realType().line("H", font).runs.at(0);
            double top = 0, bottom = -1e9;
            const views::Path outline = run.outline();
            for (const auto& command : outline.commands()) {
                if (command.verb == views::PathCommand::Verb::close) continue;
                top = std::min(top, command.to.y - run.stroke / 2);
                bottom = std::max(bottom, command.to.y + run.stroke / 2);
            }
            EXPECT_NEAR(-top, font.capHeight(), 0.1);
            EXPECT_NEAR(bottom, 0, 0.1);
            EXPECT_EQ(run.stroke > 0, design == FontDesign::rounded);
        }
    }
}

TEST(PangoTypesetter, PlacesGlyphsFromLeftToRight) {
    const auto glyphs = [](const std::string& text) {
        std::vector<std::uint32_t> result;
        double before = -1;
        for (const GlyphRun& run : realType().line(text, {}).runs) {
            for (const Glyph& glyph : run.glyphs) {
                EXPECT_GT(glyph.origin.x, std::exchange(before, glyph.origin.x));
                result.push_back(glyph.index);
            }
        }
        return result;
    };
    const auto a = glyphs("a").at(0), shin = glyphs("\u05E9").at(0), mem = glyphs("\u05DD").at(0);
    const auto mixed = glyphs("a \u05E9\u05DC\u05D5\u05DD b");
    EXPECT_TRUE(mixed.front() == a && mixed.at(2) == mem && mixed.at(5) == shin);
    const auto rightToLeft = glyphs("\u05E9\u05DC\u05D5\u05DD a");
    EXPECT_TRUE(rightToLeft.front() == a && rightToLeft.back() == shin);
}

TEST(PangoTypesetter, KnowsColouredGlyphsAndRegionalForms) {
    const GlyphRun& emoji = realType().line(family, {}).runs.at(0);
    EXPECT_TRUE(emoji.colored && emoji.glyphs.size() == 1 && emoji.outline().empty());
    EXPECT_FALSE(realType().line("a", {}).runs.at(0).colored);
    const auto outline = [](std::string_view locale) {
        PangoTypesetter regional{locale};
        return regional.line("\u76F4", {}).runs.at(0).outline();
    };
    EXPECT_NE(outline("ja_JP"), outline("zh_CN"));
    EXPECT_EQ(outline("ja_JP"), outline("ja_JP"));
}

/// Whether the line is no wider than the room, or is all that there always is: one character.
bool fits(const std::string& line, const Font& font, double room) {
    return realType().width(line, font) <= room + 0.01 ||
           realType().clusters(line, font).size() == 1;
}

TEST(PangoTypesetter, LetsTextsFitEveryWidth) {
    for (const std::string& name : names) {
        for (const FontDesign design : designs) {
            const Font font = Font::system(20, Weight::semibold, design);
            const double whole = realType().width(name, font);
            for (double room = 0; room < whole + 5; room += 3.7) {
                const auto offer = views::Proposal::points(room, 1e3);
                for (const auto mode : {views::Truncation::tail, views::Truncation::middle}) {
                    const auto cut = fitText(name, {font, 1, mode}, offer, realType()).lines.at(0);
                    EXPECT_TRUE(fits(cut, font, room)) << cut << " at " << room;
                    EXPECT_EQ(cut == name, room >= whole - 1e-3) << cut << " at " << room;
                }
                for (const std::string& line : fitText(name, {font}, offer, realType()).lines)
                    EXPECT_TRUE(fits(line, font, room)) << name << ": " << line << " at " << room;
            }
        }
    }
}

}  // namespace
}  // namespace tessary::drawing
