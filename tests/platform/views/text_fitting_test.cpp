#include "platform/views/text_fitting.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>

#include "platform/views/even_typesetter.h"
#include "support/golden.h"

namespace tessary::views {
namespace {

using Lines = std::vector<std::string>;

constexpr auto ellipsis = "\u2026";
constexpr double unlimited = std::numeric_limits<double>::infinity();

/// Room in characters by lines.
FittedText fit(const std::string& text, double characters, double lines = unlimited,
               TextStyle style = {}) {
    EvenTypesetter typesetter;
    style.font = plain;
    return fitText(text, style, Proposal::points(5 * characters, 11 * lines), typesetter);
}

bool endsCut(const FittedText& fitted) { return fitted.lines.back().ends_with(ellipsis); }

/// A case is the room in characters, also in lines where it is limited ("8x2"; "8x2m" cuts in the
/// middle), and a text.
TEST(TextFitting, WrapsAndCuts) {
    expectTranscript("fitted.txt", [](const std::string& line) {
        double room = 0, height = unlimited;
        std::string text, lines;
        std::istringstream in{line};
        in >> room;
        if (in.peek() == 'x') in.ignore() >> height;
        const bool middle = in.peek() == 'm';
        std::getline(in.ignore(middle ? 2 : 1), text);
        const auto truncation = middle ? Truncation::middle : Truncation::tail;
        const auto fitted = fit(unescaped(text), room, height, {.truncation = truncation});
        for (const std::string& each : fitted.lines) lines += '|' + each + "|\n";
        EXPECT_DOUBLE_EQ(fitted.size.height, 11.0 * static_cast<double>(fitted.lines.size()));
        return lines + "width " + std::to_string(std::lround(fitted.size.width));
    });
}

TEST(TextFitting, CutsTheLastLineThatLimitAndHeightAllow) {
    const std::string text = "aaa bbb ccc ddd eee fff ggg";
    for (int limit = 1; limit <= 9; ++limit) {
        for (double height = 0; height < 9; height += 0.25) {
            const FittedText fitted = fit(text, 3, height, {.lineLimit = limit});
            const int most = std::min({7, limit, std::max(1, static_cast<int>(height))});
            ASSERT_EQ(fitted.lines.size(), static_cast<std::size_t>(most));
            ASSERT_EQ(endsCut(fitted), most < 7) << limit << " lines, height " << height;
        }
    }
}

TEST(TextFitting, ShrinksToTheLargestScaleThatFits) {
    const auto ends = [](const std::string& text, double room, double height, int limit) {
        return endsCut(fit(text, room, height, {.lineLimit = limit}));
    };
    for (const std::string text : {"12345678901234567890", "orders-queue-age is too old again  "})
        for (const int limit : {1, 99})
            for (double room = 4; room < 40; room += 1.1)
                for (double height = 0.4; height < 7; height += 0.7) {
                    const FittedText fitted =
                        fit(text, room, height, {.lineLimit = limit, .minimumScale = 0.4});
                    const double scale = fitted.scale, more = scale * 1.0005;
                    const double tall =
                        limit == 1 ? 99 : height;  // never for the height of one line
                    ASSERT_GE(scale, 0.4);
                    ASSERT_EQ(endsCut(fitted), ends(text, room / 0.4, tall / 0.4, limit)) << room;
                    ASSERT_LE(fitted.size.width, 5 * room + 1e-3);
                    if (scale == 1 || endsCut(fitted)) continue;
                    ASSERT_TRUE(ends(text, room / more, tall / more, limit)) << room;
                    ASSERT_LE(fitted.size.height, std::max(11 * height, 11 * scale) + 0.1);
                }
}

TEST(TextFitting, MeasuresLittleOfAHugeText) {
    constexpr std::size_t megabyte = 1U << 20U;
    std::string words, wide, lines;
    while (words.size() < megabyte) words += "some words ";
    while (lines.size() < megabyte) lines += "x\n";
    while (wide.size() < megabyte) wide += "\u20AC";
    for (const std::string& text :
         {std::string(megabyte, 'x'), lines, words, "a" + wide, "ab" + wide, wide}) {
        for (const Truncation mode : {Truncation::tail, Truncation::middle}) {
            EvenTypesetter typesetter;
            const TextStyle style{plain, 3, mode, 0.5};
            const auto room = Proposal::points(132, 132);
            const auto last = fitText("<" + text + ">", style, room, typesetter).lines.back();
            EXPECT_NE(last.find(ellipsis), std::string::npos);
            EXPECT_EQ(last.ends_with('>'), mode == Truncation::middle);
            EXPECT_LT(last.size(), 200U);
            EXPECT_LT(typesetter.measuredBytes, megabyte);
        }
        const Lines all = fit("<" + text + ">", unlimited).lines;
        EXPECT_TRUE(all.front().starts_with('<') && all.back().ends_with('>'));
        EXPECT_TRUE(std::all_of(all.begin(), all.end(), foundation::isUTF8));
    }
}

}  // namespace
}  // namespace tessary::views
