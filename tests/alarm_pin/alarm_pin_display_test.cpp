#include "alarm_pin/alarm_pin_display.h"

#include <gtest/gtest.h>

#include "presentation/palette.h"

namespace tessary::alarm_pin {
namespace {

using presentation::Palette;

TEST(AlarmState, HasANameAndAColorByItsExactText) {
    struct Case {
        std::optional<std::string> state{};
        std::string text{};
        views::Color color{};
    };
    for (const auto& [state, text, color] :
         std::vector<Case>{{{}, "Unknown", Palette::tertiary},
                           {"ALARM", "In alarm", Palette::danger},
                           {"OK", "OK", Palette::success},
                           {"INSUFFICIENT_DATA", "Insufficient data", Palette::tertiary},
                           {"", "Unknown", Palette::tertiary},
                           {"alarm", "Unknown", Palette::tertiary},
                           {"Ok", "Unknown", Palette::tertiary},
                           {"OK ", "Unknown", Palette::tertiary},
                           {"Insufficient data", "Unknown", Palette::tertiary}}) {
        EXPECT_EQ(stateText(state), text);
        EXPECT_EQ(stateColor(state), color) << text;
    }
}

}  // namespace
}  // namespace tessary::alarm_pin
