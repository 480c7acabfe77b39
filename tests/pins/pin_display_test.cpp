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
    auto snapshot = this->decoded({"a"}).value();
    const auto stale = [&](double age) {
        const Date updated = Date::fromMilliseconds(snapshot.updatedMs);
        return TestFixture::Display::resolve(snapshot, "a", updated + age).pinned()->stale;
    };
    for (const auto& [interval, limit] : std::vector<std::pair<std::int64_t, double>>{
             {-5, 600}, {0, 600}, {60, 600}, {100, 600}, {200, 600}, {201, 603}, {300, 900}}) {
        snapshot.intervalSeconds = interval;
        for (int age = -10; age <= 1000; ++age)
            EXPECT_EQ(stale(age), age > limit) << interval << " at " << age;
        EXPECT_FALSE(stale(limit - 0.001));
        EXPECT_TRUE(stale(limit + 0.001));
    }
    snapshot.intervalSeconds = std::numeric_limits<std::int64_t>::max();
    EXPECT_FALSE(stale(2.7e19));
    EXPECT_TRUE(stale(2.8e19));
    snapshot.intervalSeconds = std::numeric_limits<std::int64_t>::min();
    EXPECT_FALSE(stale(600));
    EXPECT_TRUE(stale(601));
}

TYPED_TEST(PinDisplayOf, KeepsTheMillisecondsOfItsDate) {
    auto snapshot = this->decoded({"a"}).value();
    for (const auto& [milliseconds, seconds] : std::vector<std::pair<std::int64_t, double>>{
             {1500, 1.5}, {-1, -0.001}, {1'700'000'000'123, 1'700'000'000.123}}) {
        snapshot.updatedMs = milliseconds;
        const auto display = TestFixture::Display::resolve(snapshot, "a", {});
        EXPECT_EQ(display.pinned()->updated.seconds, seconds);
        EXPECT_NE(display, TestFixture::Display::resolve(snapshot, "b", {}));
    }
}

TYPED_TEST(PinDisplayOf, IsMutedByAnyOfThreeProblems) {
    for (int problems = 0; problems < 8; ++problems) {
        Pinned<typename TypeParam::Snapshot> state;
        state.pin.authExpired = (problems & 1) != 0;
        if ((problems & 2) != 0) state.pin.error = "";
        state.stale = (problems & 4) != 0;
        EXPECT_EQ(state.muted(), problems != 0);
    }
}

}  // namespace
}  // namespace tessary::pins
