#include "desktop/dialogs/pin_search.h"

#include <gtest/gtest.h>

#include "support/golden.h"

namespace tessary::dialogs {

TEST(PinSearch, FindsAllWordsInAnyOrder) {
    const PinSearch search{{{"api", "Orders CPU", "Average · prod"},
                            {"", "Größe", "Summe · prod"},
                            {"3", "orders\u00e9", ""}}};
    expectTranscript("searches.txt", [&](const std::string& text) {
        std::string found;
        for (const auto place : search.matches(unescaped(text))) found += std::to_string(place);
        return found.empty() ? "none" : found;
    });
}

}  // namespace tessary::dialogs
