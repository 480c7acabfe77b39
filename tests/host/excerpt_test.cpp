#include "host/excerpt.h"

#include <gtest/gtest.h>

#include "host/visible_text.h"

namespace tessary::host {
namespace {

/// What stands in the caret's column of an excerpt.
std::string aboveCaret(const Excerpt& excerpt) {
    std::string_view rest = excerpt.text;
    for (std::size_t cells = 0; cells + 1 < excerpt.caret.size();) {
        const VisibleCharacter character = firstVisible(rest);
        cells += static_cast<std::size_t>(character.cells);
        rest.remove_prefix(character.length);
    }
    while (!rest.empty() && firstVisible(rest).cells == 0)
        rest.remove_prefix(firstVisible(rest).length);
    return rest.empty() ? "" : firstVisible(rest).shown;
}

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

/// At every character of long lines of all widths, one cut short on either side or both.
TEST(Excerpt, PointsAtThePlace) {
    std::string line;
    for (int repetition = 0; repetition < 30; ++repetition) line += "aé日\u0627\x01🚨\xFE,";
    const std::string text = "{\n" + line + "\n}";
    std::size_t column = 1;
    for (std::size_t at = 0; at < line.size(); ++column) {
        const Excerpt excerpt = excerptAt(text, at + 2);
        const VisibleCharacter character = firstVisible(std::string_view{line}.substr(at));
        ASSERT_EQ(aboveCaret(excerpt), character.shown) << excerpt.text << '\n' << excerpt.caret;
        ASSERT_EQ(std::pair(excerpt.line, excerpt.column), std::pair(std::size_t{2}, column));
        ASSERT_EQ(excerpt.text.starts_with("…"), column > 39) << column;
        at += character.length;
    }
    EXPECT_EQ(excerptAt(std::string(5'000'000, 'x'), 4'000'000).text.find("…"), 0U);
}

}  // namespace
}  // namespace tessary::host
