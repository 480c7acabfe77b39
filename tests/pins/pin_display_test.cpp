#include "pins/pin_display.h"

#include <gtest/gtest.h>

#include "support/container.h"

namespace tessary::pins {
namespace {

using Snapshot = snapshot::AlarmPinsSnapshot;
using Display = PinDisplay<Snapshot>;

Snapshot decoded(const std::vector<std::string>& ids, int schema = 1) {
    return foundation::decodeJSON<Snapshot>(examplePins(ids, schema)).value();
}

/// "choose", or which of the pins is shown: "#1".
std::string shown(const std::optional<Snapshot>& file, const std::optional<std::string>& id) {
    const Display display = Display::resolve(file, id, exampleNow);
    if (const auto* state = display.pinned()) {
        EXPECT_EQ(state->pin, file->pins.at(std::stoul(state->pin.label.substr(1))));
        return state->pin.label;
    }
    return std::vector{"", "notPinned", "choose", "removed"}.at(display.value().index());
}

TEST(PinDisplay, FindsThePinOrSaysWhyThereIsNone) {
    struct Case {
        std::vector<std::string> ids{};
        std::optional<std::string> wanted{};
        std::string expected{};
    };
    for (const auto& [ids, wanted, expected] :
         std::vector<Case>{{{}, {}, "notPinned"},
                           {{}, "a", "notPinned"},
                           {{"a"}, {}, "choose"},
                           {{""}, {}, "choose"},
                           {{"a", ""}, "", "#1"},
                           {{"a", "b"}, "", "removed"},
                           {{"b", "a", "a"}, "a", "#1"},
                           {{"b", "a", "a"}, "b", "#0"},
                           {{"a"}, "A", "removed"},
                           {{"a"}, "#0", "removed"},
                           {{"a", " a"}, "a ", "removed"},
                           {{"aa", "ab"}, "a", "removed"},
                           {{"e", "e\u0301", "\u00E9"}, "\u00E9", "#1"},
                           {{"e", "\u00E9"}, "e\u0301", "#1"},
                           {{"\uFF21", "\u0410"}, "A", "removed"}}) {
        EXPECT_EQ(shown(decoded(ids), wanted), expected);
        EXPECT_EQ(shown(decoded(ids, 0), wanted), expected);
        EXPECT_EQ(shown(decoded(ids, -1), wanted), expected);
        EXPECT_EQ(shown(decoded(ids, 2), wanted), "notPinned");
        EXPECT_EQ(shown({}, wanted), "notPinned");
    }
}

/// As snapshot/freshness.h has it.
TEST(PinDisplay, IsStaleByThreeIntervalsAndTenMinutesAtLeast) {
    auto snapshot = decoded({"a"});
    for (const auto& [interval, limit] : {std::pair{200, 600}, {201, 603}}) {
        snapshot.intervalSeconds = interval;
        for (const double late : {0.0, 0.001}) {
            const auto display = Display::resolve(snapshot, "a", exampleUpdated + (limit + late));
            EXPECT_EQ(display.pinned()->updated, exampleUpdated);
            EXPECT_EQ(display.pinned()->muted(), late > 0);
        }
    }
}

}  // namespace
}  // namespace tessary::pins
