#include "pins/pin_provider.h"

#include <cmath>
#include <map>

#include "pins/pin_files.h"
#include "support/golden.h"

namespace tessary::pins {
namespace {

using foundation::ScopedSurroundings;

/// A provider and a query in a container, with a clock that goes on by `tick` each time it is asked
/// and a count of the reads.
template <class Widget>
struct PinHost : testing::Test {
    using Snapshot = typename Widget::Snapshot;

    Container container{};
    double time{exampleNow.seconds};
    double tick{};
    int reads{};
    ScopedSurroundings scope{surroundings()};

    foundation::Surroundings surroundings() {
        foundation::Surroundings result = container.surroundings();
        result.clock = [this] { return Date{std::exchange(time, time + tick)}; };
        result.container = [this](auto) { return ++reads, container / ""; };
        return result;
    }
    void put(const std::string& text) const { container.put(Snapshot::fileName, text); }
    static PinConfiguration chosen(const std::optional<std::string>& id) {
        return id ? PinConfiguration{intents::AppEntity{*id, "name", "detail"}}
                  : PinConfiguration{};
    }
};
TYPED_TEST_SUITE(PinHost, BothWidgets);

/// Two sine waves; times are stored as they are before the last.
TYPED_TEST(PinHost, HasASampleOfThreeHours) {
    const auto& sample = *TypeParam::sample().pinned();
    EXPECT_EQ(TypeParam::now() - sample.updated, 40);
    EXPECT_FALSE(sample.stale);
    auto pin = sample.pin;
    const auto last = pin.latest->t;
    EXPECT_EQ(last, milliseconds(TypeParam::now()));
    EXPECT_EQ(pin.latest, pin.points.back());
    if constexpr (requires { pin.stateUpdatedMs; }) pin.stateUpdatedMs.value() -= last;
    std::ostringstream dump;
    for (const auto& [t, v] : pin.points) dump << (t - last) / 1000 << ' ' << v << '\n';
    pin.points.clear();
    pin.latest.reset();
    expectGolden(std::string{TypeParam::name} + "_sample.txt",
                 foundation::toJSON(pin) + '\n' + dump.str());
}

TEST(PinProvider, CountsMillisecondsToTheNearestThatThereAre) {
    const std::map<double, double> cases{
        {0, 0},          {1.9999, 1999},    {-1.9999, -1999},  {1e15, 1e18},
        {1e300, 0x1p62}, {-1e300, -0x1p62}, {HUGE_VAL, 0x1p62}};
    for (const auto& [seconds, expected] : cases) {
        EXPECT_EQ(static_cast<double>(milliseconds(Date{seconds})), expected) << seconds;
        const auto series = sampleSeries(Date{seconds}, 1, 1);
        EXPECT_EQ(series.back().t - series.front().t, 35 * 300000);
    }
}

TYPED_TEST(PinHost, HasTheSampleForAPlaceholderWithoutReading) {
    this->put(file<TypeParam>({"a"}));
    for (const bool preview : {false, true}) {
        const auto entry = typename TypeParam::Provider{}.placeholder({.isPreview = preview});
        EXPECT_EQ(entry.date.seconds, exampleNow.seconds + (preview ? 1000 : 0));
        EXPECT_EQ(entry.display, TypeParam::sample());
        this->time += 1000;
    }
    EXPECT_EQ(this->reads, 0);
}

TYPED_TEST(PinHost, GivesTheChosenPinOrInAPreviewWithoutPinsTheSample) {
    using Display = PinDisplay<typename TypeParam::Snapshot>;
    for (const auto& text :
         {std::string{}, std::string{"{"}, file<TypeParam>({}), file<TypeParam>({"a"}, 2),
          file<TypeParam>({"a", "b"}), file<TypeParam>({"a", "b"}, 0)}) {
        this->put(text);
        const auto decoded = foundation::decodeJSON<typename TypeParam::Snapshot>(text);
        std::optional<typename TypeParam::Snapshot> real;
        if (decoded) real = decoded.value();
        const bool anything = real && real->schemaVersion < 2 && !real->pins.empty();
        for (const std::optional<std::string>& id : {std::optional<std::string>{}, {"b"}, {"x"}}) {
            for (const bool preview : {true, false}) {
                this->reads = 0;
                const auto entry = typename TypeParam::Provider{}.snapshot(this->chosen(id),
                                                                           {.isPreview = preview});
                EXPECT_EQ(entry.date, exampleNow);
                EXPECT_EQ(entry.display, preview && !anything
                                             ? TypeParam::sample()
                                             : Display::resolve(real, id, exampleNow));
                EXPECT_EQ(this->reads, 1);
            }
        }
    }
}

TYPED_TEST(PinHost, GivesFiveMinutesOfEntriesEachJudgedAtItsOwnDate) {
    using Display = PinDisplay<typename TypeParam::Snapshot>;
    this->tick = 7;
    for (const double age : {0, 360, 361, 600}) {
        for (const std::string& text : {file<TypeParam>({"b", "a"}), std::string{}}) {
            this->put(text);
            this->time = exampleUpdated.seconds + age;
            this->reads = 0;
            const auto timeline =
                typename TypeParam::Provider{}.timeline(this->chosen("a"), {.isPreview = true});
            EXPECT_EQ(this->reads, 1);
            EXPECT_EQ(timeline.policy, widgets::ReloadPolicy{exampleUpdated + (age + 300)});
            ASSERT_EQ(timeline.entries.size(), 5);
            for (int i = 0; i < 5; ++i) {
                const auto& [date, display] = timeline.entries[static_cast<std::size_t>(i)];
                EXPECT_EQ(date, exampleUpdated + (age + 60 * i));
                const auto* state = display.pinned();
                EXPECT_EQ(display == Display{NotPinned{}}, text.empty());
                EXPECT_EQ(state != nullptr && state->stale, !text.empty() && age + 60 * i > 600);
                EXPECT_TRUE(state == nullptr || state->pin.label == "#1");
            }
        }
    }
}

TYPED_TEST(PinHost, OffersThePinsOfTheFile) {
    using Entities = std::vector<intents::AppEntity>;
    const typename TypeParam::Query query;
    const auto pin = [](const char* id, const char* name) {
        return intents::AppEntity{id, name, TypeParam::detail};
    };
    const auto gone = [](const char* id) {
        return intents::AppEntity{id, "Removed from Tessary", ""};
    };
    this->put(file<TypeParam>({"b", "a", "b", "\u00E9"}));
    EXPECT_EQ(query.suggestedEntities(),
              (Entities{pin("b", "#0"), pin("a", "#1"), pin("b", "#2"), pin("\u00E9", "#3")}));
    EXPECT_EQ(query.defaultResult(), pin("b", "#0"));
    EXPECT_EQ(query.entities({}), Entities{});
    EXPECT_EQ(query.entities({"a", "x", "b", "A", "x", "a", "e\u0301", ""}),
              (Entities{pin("a", "#1"), gone("x"), pin("b", "#0"), gone("A"), gone("x"),
                        pin("a", "#1"), pin("\u00E9", "#3"), gone("")}));
    for (const std::string& text :
         {std::string{}, std::string{"[]"}, file<TypeParam>({"a"}, 2), file<TypeParam>({})}) {
        this->put(text);
        EXPECT_EQ(query.suggestedEntities(), Entities{});
        EXPECT_EQ(query.defaultResult(), std::nullopt);
        EXPECT_EQ(query.entities({"a", "a"}), (Entities{gone("a"), gone("a")}));
        EXPECT_EQ(query.entities({}), Entities{});
    }
}

}  // namespace
}  // namespace tessary::pins
