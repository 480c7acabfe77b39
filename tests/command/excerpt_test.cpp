#include "command/excerpt.h"

#include <gtest/gtest.h>

#include "platform/foundation/visible_text.h"

namespace tessary::command {

using foundation::firstVisible;
using foundation::visible;
namespace {

TEST(VisibleText, ShowsAllAndObeysNothing) {
    for (const auto& [text, shown] : std::vector<std::pair<std::string, std::string>>{
             {"", ""},
             {"aé日e\u0301", "aé日e\u0301"},
             {"\t\n\x1B[31m\x7F", "→␊␛[31m␡"},
             {std::string(1, '\0'), "␀"},
             {"\xFF\xC3", "��"},
             {"\u0085\u202E\u200B\uFEFF\u2028", "�����"}})
        EXPECT_EQ(visible(text), shown);
    const std::string mixed = "a日本bé\tc日";  // 11 cells
    for (std::size_t most = 1; most < 13; ++most) {
        std::size_t cells = 0;
        std::string_view rest = mixed;
        const std::string cut = visible(mixed, most);
        EXPECT_EQ(cut == visible(mixed), most >= 11) << most;
        for (rest = cut; !rest.empty(); rest.remove_prefix(firstVisible(rest).length))
            cells += static_cast<std::size_t>(firstVisible(rest).cells);
        EXPECT_LE(cells, most);
    }
}

TEST(Excerpt, CountsLinesAndCharacters) {
    using Row = std::tuple<std::string, std::size_t, Excerpt>;
    for (const auto& [text, offset, expected] :
         std::vector<Row>{{"", 0, {1, 1, "", "^"}},
                          {"\n \n", 3, {1, 1, "", "^"}},
                          {"{\r\n\t\"a\":\t7\r\n}", 9, {2, 7, " \"a\":→7", "      ^"}},
                          {"{}\n\n", 4, {1, 3, "{}", "  ^"}},
                          {"a\r\n", 1, {1, 2, "a", " ^"}},
                          {"\xEF\xBB\xBF{}", 0, {1, 1, "�{}", "^"}},
                          {"é日\xFF!", 6, {1, 4, "é日�!", "    ^"}}}) {
        const Excerpt at = excerptAt(text, offset);
        EXPECT_EQ(at, expected) << at.line << ':' << at.column << '\n'
                                << at.text << '\n'
                                << at.caret;
    }
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
