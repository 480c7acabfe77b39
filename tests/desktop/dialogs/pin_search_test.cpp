#include "desktop/dialogs/pin_search.h"

#include <gtest/gtest.h>

#include "support/table.h"

namespace tessary::dialogs {
namespace {

TEST(PinSearch, FindsAllWordsInAnyOrder) {
    const PinSearch search{{{"api", "Orders CPU", "Average · prod"},
                            {"", "Größe", "Summe · prod"},
                            {"3", "orders\u00e9", ""}}};
    for (const auto& row : table(R"(
                       | 0 1 2
        orders         | 0 2
        PROD  cpu      | 0
        prod average ord | 0
        cpuaverage     |
        api            |
        GRÖSSE         | 1
        orderse)"
                                 "\u0301"
                                 R"( | 2
        ·              | 0 1
        .              |
    )")) {
        std::string found;
        for (const auto place : search.matches(row[0])) found += " " + std::to_string(place);
        EXPECT_EQ(found.empty() ? "" : found.substr(1), row.size() > 1 ? row[1] : "") << row[0];
    }
}

}  // namespace
}  // namespace tessary::dialogs
