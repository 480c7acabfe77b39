#include "pins/pin_provider.h"

#include <cmath>
#include <map>

#include "pins/pin_files.h"
#include "support/golden.h"

namespace tessary::pins {
namespace {

using system::ScopedSurroundings;
using Snapshot = snapshot::AlarmPinsSnapshot;
using Display = PinDisplay<Snapshot>;
using Provider = alarm_pin::AlarmPinProvider;
using Query = alarm_pin::AlarmPinQuery;
using PreviewData = alarm_pin::AlarmPinPreviewData;

/// A provider and a query in a container, with a clock that goes on by `tick` each time it is asked
/// and a count of the reads.
struct PinHost : testing::Test {
    Container container{};
    double time{exampleNow.seconds};
    double tick{};
    int reads{};
    ScopedSurroundings scope{surroundings()};

    system::Surroundings surroundings() {
        system::Surroundings result = container.surroundings();
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
/// Two sine waves; times are stored as they are before the last.
template <class Pinned>
std::string described(const Pinned& sample, Date now) {
    EXPECT_EQ(now - sample.updated, 40);
    EXPECT_FALSE(sample.stale);
    auto pin = sample.pin;
    const auto last = pin.latest->t;
    EXPECT_EQ(last, milliseconds(now));
    EXPECT_EQ(pin.latest, pin.points.back());
    if constexpr (requires { pin.stateUpdatedMs; }) pin.stateUpdatedMs.value() -= last;
    std::ostringstream dump;
    for (const auto& [t, v] : pin.points) dump << (t - last) / 1000 << ' ' << v << '\n';
    pin.points.clear();
    pin.latest.reset();
    return foundation::toJSON(pin) + '\n' + dump.str();
}

TEST_F(PinHost, HasASampleOfThreeHours) {
    expectGolden("alarm_sample.txt", described(*PreviewData::alarm().pinned(), PreviewData::now()));
    using Metric = metric::MetricPreviewData;
    expectGolden("metric_sample.txt", described(*Metric::cpu().pinned(), Metric::now()));
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

TEST_F(PinHost, HasTheSampleForAPlaceholderWithoutReading) {
    put(file({"a"}));
    for (const bool preview : {false, true}) {
        const auto entry = Provider{}.placeholder({.isPreview = preview});
        EXPECT_EQ(entry.date.seconds, exampleNow.seconds + (preview ? 1000 : 0));
        EXPECT_EQ(entry.display, PreviewData::alarm());
        time += 1000;
    }
    EXPECT_EQ(reads, 0);
}

TEST_F(PinHost, GivesTheChosenPinOrInAPreviewWithoutPinsTheSample) {
    for (const auto& text : {std::string{}, std::string{"{"}, file({}), file({"a"}, 2),
                             file({"a", "b"}), file({"a", "b"}, 0)}) {
        put(text);
        const auto decoded = foundation::decodeJSON<Snapshot>(text);
        std::optional<Snapshot> real;
        if (decoded) real = decoded.value();
        const bool anything = real && real->schemaVersion < 2 && !real->pins.empty();
        for (const std::optional<std::string>& id : {std::optional<std::string>{}, {"b"}, {"x"}}) {
            for (const bool preview : {true, false}) {
                reads = 0;
                const auto entry = Provider{}.snapshot(chosen(id), {.isPreview = preview});
                EXPECT_EQ(entry.date, exampleNow);
                EXPECT_EQ(entry.display, preview && !anything
                                             ? PreviewData::alarm()
                                             : Display::resolve(real, id, exampleNow));
                EXPECT_EQ(reads, 1);
            }
        }
    }
}

TEST_F(PinHost, GivesFiveMinutesOfEntriesEachJudgedAtItsOwnDate) {
    tick = 7;
    for (const double age : {0, 360, 361, 600}) {
        for (const std::string& text : {file({"b", "a"}), std::string{}}) {
            put(text);
            time = exampleUpdated.seconds + age;
            reads = 0;
            const auto timeline = Provider{}.timeline(chosen("a"), {.isPreview = true});
            EXPECT_EQ(reads, 1);
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

TEST_F(PinHost, OffersThePinsOfTheFile) {
    using Entities = std::vector<intents::AppEntity>;
    const Query query;
    container.put("metrics", file({"m"}));
    EXPECT_EQ(metric::MetricPinQuery{}.suggestedEntities(),
              (Entities{{"m", "#0", "CPU · Sum · prod · eu-west-1"}}));
    const auto pin = [](const char* id, const char* name) {
        return intents::AppEntity{id, name, "prod · eu-west-1"};
    };
    const auto gone = [](const char* id) {
        return intents::AppEntity{id, "Removed from Tessary", ""};
    };
    put(file({"b", "a", "b", "\u00E9"}));
    EXPECT_EQ(query.suggestedEntities(),
              (Entities{pin("b", "#0"), pin("a", "#1"), pin("b", "#2"), pin("\u00E9", "#3")}));
    EXPECT_EQ(query.defaultResult(), pin("b", "#0"));
    EXPECT_EQ(query.entities({}), Entities{});
    EXPECT_EQ(query.entities({"a", "x", "b", "A", "x", "a", "e\u0301", ""}),
              (Entities{pin("a", "#1"), gone("x"), pin("b", "#0"), gone("A"), gone("x"),
                        pin("a", "#1"), pin("\u00E9", "#3"), gone("")}));
    for (const std::string& text : {std::string{}, std::string{"[]"}, file({"a"}, 2), file({})}) {
        put(text);
        EXPECT_EQ(query.suggestedEntities(), Entities{});
        EXPECT_EQ(query.defaultResult(), std::nullopt);
        EXPECT_EQ(query.entities({"a", "a"}), (Entities{gone("a"), gone("a")}));
        EXPECT_EQ(query.entities({}), Entities{});
    }
}

}  // namespace
}  // namespace tessary::pins
