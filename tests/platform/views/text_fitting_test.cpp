#include "platform/views/text_fitting.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>

#include "platform/views/even_typesetter.h"
#include "support/golden.h"

namespace tessary::views {
namespace {

using Lines = std::vector<std::string>;
using namespace std::string_literals;

constexpr auto ellipsis = "\u2026";
constexpr double unlimited = std::numeric_limits<double>::infinity();

/// Room in characters by lines.
FittedText fit(const std::string& text, double characters, double lines = unlimited,
               TextStyle style = {}) {
    EvenTypesetter typesetter;
    style.font = plain;
    return fitText(text, style, Proposal::points(5 * characters, 11 * lines), typesetter);
}

std::string trimmed(std::string text, bool atEnd) {
    const auto at = atEnd ? text.find_last_not_of(' ') + 1 : text.find_first_not_of(' ');
    return atEnd ? text.substr(0, at) : at == std::string::npos ? "" : text.substr(at);
}

bool endsCut(const FittedText& fitted) { return fitted.lines.back().ends_with(ellipsis); }

TEST(TextFitting, WrapsAtWordsAndInsideThemOnlyWhereItMust) {
    expectTranscript("wrapped.txt", [](const std::string& line) {  // room in characters, and a text
        std::string lines, text = line.substr(line.find(' ') + 1);
        std::replace(text.begin(), text.end(), '/', '\n');
        const FittedText fitted = fit(text, std::stod(line));
        for (const std::string& each : fitted.lines) lines += '|' + each + "|\n";
        EXPECT_DOUBLE_EQ(fitted.size.height, 11.0 * static_cast<double>(fitted.lines.size()));
        return lines;
    });
    EXPECT_DOUBLE_EQ(fit("one two three", 8).size.width, 35);  // its longest line's, not the room's
}

TEST(TextFitting, EndsALineAtEveryHardBreakAndDropsOtherControls) {
    for (const std::string hard : {"\n", "\r", "\r\n", "\v", "\f", "\u0085", "\u2028", "\u2029"}) {
        EXPECT_EQ(fit("ab" + hard + "cd", unlimited).lines, (Lines{"ab", "cd"}));
        EXPECT_EQ(fit("ab" + hard + hard + "cd", 2).lines, (Lines{"ab", "", "cd"}));
    }
    EXPECT_EQ(fit("ab\n\rcd", 9).lines, (Lines{"ab", "", "cd"}));
    EXPECT_EQ(fit("a\tb\0c\x1B[31m\x7F\u0080\u009F\u00A0d"s, 20).lines, Lines{"a bc[31m\u00A0d"});
    for (char c = 0; c < '\t'; ++c) EXPECT_EQ(fit({'a', c, 'b'}, 9).lines, Lines{"ab"});
    for (char c = '\r' + 1; c < ' '; ++c) EXPECT_EQ(fit({'a', c, 'b'}, 9).lines, Lines{"ab"});
}

TEST(TextFitting, CutsAtEveryWidth) {
    const std::string text = "the quick-brown fox  jumps over";
    const std::size_t length = text.size();
    for (double room = 0; room < static_cast<double>(length) + 2; room += 0.1) {
        const auto cut = [&](Truncation mode) {
            return fit(text, room, 1, {.lineLimit = 1, .truncation = mode}).lines[0];
        };
        const auto kept = static_cast<std::size_t>(std::max(room + 1e-9 - 1, 0.0));
        const bool whole = kept + 1 >= length;
        const std::string start = trimmed(text.substr(0, kept - kept / 2), true);
        const std::string end = trimmed(text.substr(length - std::min(length, kept / 2)), false);
        EXPECT_EQ(cut(Truncation::tail),
                  whole ? text : trimmed(text.substr(0, kept), true) + ellipsis);
        EXPECT_EQ(cut(Truncation::middle), whole ? text : start + ellipsis + end) << room;
    }
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
    EXPECT_EQ(fit("aaa bbb ccc ddd", 8, 2, {.truncation = Truncation::middle}).lines,
              (Lines{"aaa bbb", "ccc ddd"}));
    EXPECT_EQ(fit("aaa bbb ccc dddd", 7, 2, {.truncation = Truncation::middle}).lines,
              (Lines{"aaa bbb", "ccc\u2026ddd"}));
    EXPECT_EQ(fit("aa\nbb\ncc\ndd", 20, 2).lines, (Lines{"aa", "bb cc dd\u2026"}));
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
    std::string words, wide;
    while (words.size() < megabyte) words += "some words ";
    while (wide.size() < megabyte) wide += "\u20AC";
    for (const std::string& text : {std::string(megabyte, 'x'), std::string(megabyte, '\n'), words,
                                    "a" + wide, "ab" + wide, wide}) {
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
