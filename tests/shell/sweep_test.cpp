// Every widget with texts of any length, held to what holds for every display list, as the fuzzers
// hold them to it.
#include <gtest/gtest.h>
#include <limits>

#include "display_list_rules.h"
#include "fuzzer.h"
#include "platform/foundation/utf8.h"
#include "shell/tessary_widgets.h"
#include "support/container.h"
#include "support/golden.h"
#include "support/rendering.h"

namespace tessary {

void fuzz::require(bool holds, std::string_view rule, std::string_view shown) {
    EXPECT_TRUE(holds) << rule << ": " << shown;
}

namespace {

using views::TextElement;
using widgets::Request;

constexpr auto most = std::numeric_limits<std::int64_t>::max();

/// A file in which TEXT stands for everything that it says in words; "[" and "]" tell where it
/// ends.
std::string stored(const char* name) { return contents(storedGolden(name, __FILE__)); }

std::string alarmsOf(const std::string& text, bool isStale, std::int64_t firing) {
    const auto file = replaced(stored("alarms.json"), "UPDATED", isStale ? "0" : "1731772800000");
    return replaced(replaced(file, "FIRING", std::to_string(firing)), "TEXT", text);
}
std::string pinOf(const std::string& text, bool isMuted) {
    const auto error = isMuted ? R"("[TEXT]")" : "null";
    return replaced(replaced(stored("pins.json"), "ERROR", error), "TEXT", text);
}

/// The least that a text may shrink to.
double leastScale(const TextElement& text) {
    if (text.font.size >= 28) return 0.5;
    if (text.text.find(" / ") != std::string::npos) return 0.85;
    const bool isShort = text.font.design == views::FontDesign::rounded;
    return isShort || text.font.monospacedDigits ? 0.7 : 1;
}

/// What is cut shows both its ends if it is cut in its middle, and is as small as it may become.
void expectFitted(const TextElement& text) {
    const std::string& last = text.lines.back();
    const bool isCut = last.find("…") != std::string::npos;
    if (text.text.starts_with('[')) {
        EXPECT_TRUE(text.lines.front().starts_with('[')) << text.text;
    }
    if (text.truncation == views::Truncation::middle) {
        EXPECT_TRUE(last.ends_with(']')) << text.text << " as " << last;
    }
    EXPECT_GE(text.shrink, leastScale(text)) << text.text;
    EXPECT_TRUE(!isCut || text.shrink == leastScale(text)) << text.text << " at " << text.shrink;
}

/// Nothing stands in the margins or, in the medium size, across the gap between the columns.
void expectInColumns(const views::Element& element, bool medium, double left, double right) {
    const views::Rect& frame = element.frame;
    EXPECT_TRUE(frame.minX() >= 16 && frame.minY() >= 16 && frame.maxY() <= 148);
    EXPECT_LE(frame.maxX(), medium ? 328 : 148);
    const bool isDivider = frame.size.width == 1;
    EXPECT_TRUE(!medium || isDivider || frame.maxX() <= left || frame.minX() >= right)
        << frame.minX() << " to " << frame.maxX();
}

TEST(EveryWidget, KeepsTextsOfAnyLengthInTheirColumns) {
    const Container container;
    const auto bundle = shell::TessaryWidgets{container.source()}.body();
    const auto check = [&](const std::string& text, bool hasProblem) {
        SCOPED_TRACE(text);
        const std::string locale = hasProblem ? "ar_EG" : "en_US";
        container.put("alarms", alarmsOf(text, hasProblem, hasProblem ? most : 1234567));
        for (const char* name : {"metrics", "alarm-pins"})
            container.put(name, pinOf(text, hasProblem));
        for (const auto& widget : bundle)
            for (const bool medium : {false, true}) {
                const auto answer = widget.answer(Request::snapshot, {.choice = "a"});
                const views::View view = answer.entries.at(0).view();
                const auto list = hosted(view, medium, false, realType(), locale);
                fuzz::checkDisplayList(list);
                for (const views::Element& element : list.elements) {
                    expectInColumns(element, medium, widget.intent ? 144 : 134,
                                    widget.intent ? 158 : 163);
                    if (const auto* shown = std::get_if<TextElement>(&element.content))
                        expectFitted(*shown);
                }
                EXPECT_GE(list.elements.size(), 5);
            }
    };
    for (const std::string character : {"i", "W", "é", "漢", "ع", "e\u0301", "👩\u200D💻", "w "}) {
        std::string text;
        for (int length = 1; length <= 401; ++length) {
            text += character;
            if (length <= 20 || length % 200 < 2) check(text, length % 2 == 0);
        }
    }
}

}  // namespace
}  // namespace tessary
