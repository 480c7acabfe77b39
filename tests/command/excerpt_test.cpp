#include "command/excerpt.h"

#include <gtest/gtest.h>

#include "support/golden.h"

namespace tessary::command {
namespace {

TEST(Excerpt, CountsLinesAndCharacters) {
    expectTranscript("excerpts.txt", [](const std::string& line) {  // an offset, and a text
        const auto text = unescaped(line.substr(line.find(' ') + 1));
        const Excerpt at = excerptAt(text, std::stoul(line));
        return std::to_string(at.line) + ':' + std::to_string(at.column) + '\n' + at.text + '\n' +
               at.caret;
    });
}

TEST(Excerpt, IsShortWhereverItPointsInAHugeLine) {
    const std::string line(5'000'000, 'x');
    for (const std::size_t at :
         {std::size_t{0}, std::size_t{48}, std::size_t{49}, line.size() / 2}) {
        const Excerpt excerpt = excerptAt(line, at);
        EXPECT_EQ(excerpt.text.starts_with("…"), at > 48) << at;
        EXPECT_EQ(excerpt.caret.size(), std::min<std::size_t>(at, 49) + 1) << at;
        EXPECT_TRUE(excerpt.column == at + 1 && excerpt.text.size() < 100) << at;
    }
}

}  // namespace
}  // namespace tessary::command
