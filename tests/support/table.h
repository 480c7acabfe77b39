// Tables of test cases as text.
#pragma once

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

namespace tessary {

/// The lines of a text, each cut at its bars, without the blanks around a cell; empty lines are
/// left out: table("a | b c\n| d") is {{"a", "b c"}, {"", "d"}}.
inline std::vector<std::vector<std::string>> table(const std::string& text) {
    std::vector<std::vector<std::string>> rows;
    std::istringstream lines{text};
    for (std::string line; std::getline(lines, line);) {
        if (line.find_first_not_of(' ') == std::string::npos) continue;
        auto& row = rows.emplace_back();
        std::istringstream cells{line};
        for (std::string cell; std::getline(cells, cell, '|');) {
            const auto start = std::min(cell.find_first_not_of(' '), cell.size());
            row.push_back(cell.substr(start, cell.find_last_not_of(' ') + 1 - start));
        }
    }
    return rows;
}

}  // namespace tessary
