#include "pins/pin_display.h"

#include <limits>

#include "pins/pin_files.h"

namespace tessary::pins {
namespace {

template <class Widget>
struct PinDisplayOf : testing::Test {
    using Snapshot = typename Widget::Snapshot;
    using Display = PinDisplay<Snapshot>;

    /// "choose", or which of the pins is shown: "#1".
    static std::string shown(const std::optional<Snapshot>& file,
                             const std::optional<std::string>& id) {
        const Display display = Display::resolve(file, id, exampleNow);
        if (const auto* state = display.pinned()) {
            EXPECT_EQ(state->pin, file->pins.at(std::stoul(state->pin.label.substr(1))));
            EXPECT_EQ(state->updated, exampleUpdated);
            return state->pin.label;
        }
        return std::vector{"", "notPinned", "choose", "removed"}.at(display.value().index());
    }
    static std::optional<Snapshot> decoded(const std::vector<std::string>& ids, int schema = 1) {
        return foundation::decodeJSON<Snapshot>(file<Widget>(ids, schema)).value();
    }
};
TYPED_TEST_SUITE(PinDisplayOf, BothWidgets);

TYPED_TEST(PinDisplayOf, FindsThePinOrSaysWhyThereIsNone) {
    struct Case {
        std::vector<std::string> ids{};
        std::optional<std::string> wanted{};
        std::string shown{};
    };
    for (const auto& [ids, wanted, shown] :
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
        EXPECT_EQ(this->shown(this->decoded(ids), wanted), shown);
        EXPECT_EQ(this->shown(this->decoded(ids, 0), wanted), shown);
        EXPECT_EQ(this->shown(this->decoded(ids, -1), wanted), shown);
        EXPECT_EQ(this->shown(this->decoded(ids, 2), wanted), "notPinned");
        EXPECT_EQ(this->shown({}, wanted), "notPinned");
    }
}

TYPED_TEST(PinDisplayOf, IsStaleAfterThreeIntervalsAndTenMinutesAtLeast) {
    constexpr auto longest = std::numeric_limits<std::int64_t>::max();
    constexpr auto lowest = std::numeric_limits<std::int64_t>::min();
    auto snapshot = this->decoded({"a"}).value();
    for (const std::int64_t milliseconds : {std::int64_t{1'700'000'000'123}, std::int64_t{-1}}) {
        snapshot.updatedMs = milliseconds;
        const Date updated{static_cast<double>(milliseconds) / 1000};
        for (const auto& [interval, limit] :
             std::vector<std::pair<std::int64_t, double>>{{lowest, 600},
                                                          {0, 600},
                                                          {200, 600},
                                                          {201, 603},
                                                          {300, 900},
                                                          {longest, 2.767e19}}) {
            snapshot.intervalSeconds = interval;
            for (const double age : {-10.0, limit - 0.001, limit, limit + 0.001, 2.8e19}) {
                const auto display = TestFixture::Display::resolve(snapshot, "a", updated + age);
                const auto* state = display.pinned();
                EXPECT_EQ(state->updated, updated);
                EXPECT_EQ(state->stale, (updated + age) - updated > limit) << interval << age;
                EXPECT_EQ(state->muted(), state->stale);
            }
        }
    }
}

}  // namespace
}  // namespace tessary::pins
