#include "platform/drawing/pango_typesetter.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>

#include "platform/foundation/utf8.h"
#include "platform/views/text_fitting.h"

namespace tessary::drawing {
namespace {

using views::Cluster;
using views::Font;
using views::FontDesign;
using views::Weight;

constexpr auto weights = {Weight::regular, Weight::medium, Weight::semibold};
constexpr auto designs = {FontDesign::standard, FontDesign::rounded};
constexpr const char* family = "\U0001F469\u200D\U0001F469\u200D\U0001F467";
const std::string names[] = {
    "orders-queue-age",
    "Office fjord AVATAR",
    "Ce\u0301line na\u00EFve \u0141\u00F3d\u017A",
    "Καθυστέρηση ουράς",
    "Очередь заказов",
    "תור ההזמנות 42",
    "طابور الطلبات",
    "कतार की आयु क्षि",
    "คิวคำสั่งซื้อ",
    "注文キューの遅延",
    "주문 대기열",
    "订单队列",
    "fire \U0001F525 \U0001F44D\U0001F3FD",
    family,
    "\U0001F3F3\uFE0F\u200D\U0001F308",
    "\U0001F1E9\U0001F1EA\U0001F1EF\U0001F1F5",
    "1\uFE0F\u20E3 p99 > 1\u202F500 ms",
    "a\u00A0b \u2026 \u2192 \u20AC",
};

PangoTypesetter& typesetter() {
    static PangoTypesetter shared{"en_US"};
    return shared;
}

TEST(PangoTypesetter, HasAGlyphForEveryName) {
    for (const std::string& name : names)
        for (const FontDesign design : designs)
            for (const GlyphRun& run :
                 typesetter().line(name, Font::system(13, Weight::medium, design)).runs)
                for (const Glyph& glyph : run.glyphs) EXPECT_NE(glyph.index, 0U) << name;
}

TEST(PangoTypesetter, CutsALineIntoWholeCharactersThatAddUpToIt) {
    for (const std::string& name : names) {
        for (const FontDesign design : designs) {
            const Font font = Font::system(44, Weight::semibold, design);
            std::size_t next = 0;
            double sum = 0;
            for (const Cluster& cluster : typesetter().clusters(name, font)) {
                EXPECT_EQ(cluster.start, next) << name;
                EXPECT_TRUE(cluster.length > 0 &&
                            foundation::isUTF8(name.substr(next, cluster.length)))
                    << name;
                EXPECT_EQ(cluster.space, name[next] == ' ' ||
                                             name.substr(next, cluster.length) == "\u00A0" ||
                                             name.substr(next, cluster.length) == "\u202F")
                    << name;
                next += cluster.length;
                sum += cluster.advance;
            }
            EXPECT_EQ(next, name.size());
            EXPECT_NEAR(sum, typesetter().width(name, font), 0.02 * sum) << name;
        }
    }
    EXPECT_EQ(typesetter().clusters(family, {}).size(), 1U);
    EXPECT_EQ(typesetter().clusters("e\u0301\U0001F1E9\U0001F1EA", {}).size(), 2U);
    EXPECT_TRUE(typesetter().clusters("", {}).empty());
}

TEST(PangoTypesetter, ScalesWidthsWithTheSize) {
    for (const std::string& name : names) {
        for (const FontDesign design : designs) {
            const double one = typesetter().width(name, Font::system(10, Weight::regular, design));
            EXPECT_GT(one, 5);
            for (const double size : {5.0, 13.0, 44.0})
                EXPECT_NEAR(typesetter().width(name, Font::system(size, Weight::regular, design)),
                            one * size / 10, 0.01 * one * size / 10)
                    << name;
        }
    }
    EXPECT_EQ(typesetter().width("", {}), 0);
}

/// One width but for the typeface's own rounding, a thousandth of its size.
TEST(PangoTypesetter, GivesMonospacedDigitsOneWidth) {
    for (const Weight weight : weights) {
        for (const FontDesign design : designs) {
            Font font = Font::system(44, weight, design);
            const double proportional = typesetter().width("1", font);
            font.monospacedDigits = true;
            const double digit = typesetter().width("0", font);
            EXPECT_LT(proportional, 0.95 * digit);
            for (char c = '1'; c <= '9'; ++c)
                EXPECT_NEAR(typesetter().width(std::string(1, c), font), digit, 0.05);
            EXPECT_NEAR(typesetter().width("2718", font), 4 * digit, 0.2);
        }
    }
}

TEST(PangoTypesetter, SetsCapitalsAsTallAsTheSystemFonts) {
    for (const Weight weight : weights) {
        for (const FontDesign design : designs) {
            const Font font = Font::system(100, weight, design);
            const GlyphRun& run = typesetter().line("H", font).runs.at(0);
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
        std::vector<Glyph> result;
        for (const GlyphRun& run : typesetter().line(text, {}).runs)
            result.insert(result.end(), run.glyphs.begin(), run.glyphs.end());
        return result;
    };
    const std::uint32_t shin = glyphs("\u05E9").at(0).index, mem = glyphs("\u05DD").at(0).index;
    const std::vector<Glyph> alone = glyphs("\u05E9\u05DC\u05D5\u05DD");
    EXPECT_EQ(alone.front().index, mem);
    EXPECT_EQ(alone.back().index, shin);
    const std::vector<Glyph> mixed = glyphs("a \u05E9\u05DC\u05D5\u05DD b");
    EXPECT_EQ(mixed.front().index, glyphs("a").at(0).index);
    EXPECT_EQ(mixed.at(2).index, mem);
    const std::vector<Glyph> rightToLeft = glyphs("\u05E9\u05DC\u05D5\u05DD a");
    EXPECT_EQ(rightToLeft.front().index, glyphs("a").at(0).index);
    EXPECT_EQ(rightToLeft.back().index, shin);
    for (std::size_t i = 1; i < mixed.size(); ++i)
        EXPECT_GT(mixed[i].origin.x, mixed[i - 1].origin.x);
}

TEST(PangoTypesetter, KnowsColouredGlyphsAndRegionalForms) {
    const GlyphRun& emoji = typesetter().line(family, {}).runs.at(0);
    EXPECT_TRUE(emoji.colored && emoji.glyphs.size() == 1 && emoji.outline().empty());
    EXPECT_FALSE(typesetter().line("a", {}).runs.at(0).colored);
    const auto outline = [](std::string_view locale) {
        PangoTypesetter regional{locale};
        return regional.line("\u76F4", {}).runs.at(0).outline();
    };
    EXPECT_NE(outline("ja_JP"), outline("zh_CN"));
    EXPECT_EQ(outline("ja_JP"), outline("ja_JP"));
}

/// Whether the line is no wider than the room, or is all that there always is: one character.
bool fits(const std::string& line, const Font& font, double room) {
    return typesetter().width(line, font) <= room + 0.01 ||
           typesetter().clusters(line, font).size() == 1;
}

TEST(PangoTypesetter, LetsTextsFitEveryWidth) {
    for (const std::string& name : names) {
        for (const FontDesign design : designs) {
            const Font font = Font::system(20, Weight::semibold, design);
            const double whole = typesetter().width(name, font);
            for (double room = 0; room < whole + 5; room += 3.7) {
                const auto offer = views::Proposal::points(room, 1e3);
                for (const auto mode : {views::Truncation::tail, views::Truncation::middle}) {
                    const auto cut =
                        fitText(name, {font, 1, mode}, offer, typesetter()).lines.at(0);
                    EXPECT_TRUE(fits(cut, font, room)) << cut << " at " << room;
                    EXPECT_EQ(cut == name, room >= whole - 1e-3) << cut << " at " << room;
                }
                for (const std::string& line : fitText(name, {font}, offer, typesetter()).lines)
                    EXPECT_TRUE(fits(line, font, room)) << name << ": " << line << " at " << room;
            }
        }
    }
}

}  // namespace
}  // namespace tessary::drawing
