#include "platform/foundation/date.h"

#include <gtest/gtest.h>

#include "support/golden.h"

namespace tessary::foundation {

TEST(Date, ParsesSecondsAndTimestamps) {
    expectTranscript("dates.txt", [](const std::string& text) {
        const auto date = Date::parse(text);
        return date ? std::to_string(date->seconds) : "refused";
    });
    EXPECT_FALSE(Date::parse(std::string(400, '9')));
}

}  // namespace tessary::foundation
