// What every widget answers a host, told once for the three of them.
#include <gtest/gtest.h>

#include "shell/tessary_widgets.h"
#include "support/container.h"

namespace tessary::shell {
namespace {

using foundation::Date;
using widgets::Request;
using widgets::WidgetEntry;

enum Place : std::size_t { alarms, metric, alarm };  // in the bundle

/// A bundle on a container, with a clock that goes on by `tick` each time it is asked and a count
/// of the reads.
struct Answers : testing::TestWithParam<Place> {
    Container container{};
    double time{exampleNow.seconds};
    double tick{};
    int reads{};
    WidgetConfiguration widget{bundle().at(GetParam())};

    std::vector<WidgetConfiguration> bundle() {
        snapshot::Source source = container.source();
        source.clock = [this] { return Date{std::exchange(time, time + tick)}; };
        source.read = [this](const auto& file) { return ++reads, system::readFile(file); };
        return TessaryWidgets{source}.body();
    }
    void put(const std::string& text) {
        container.put(std::vector{"alarms", "metrics", "alarm-pins"}.at(GetParam()), text);
        reads = 0;
    }
    bool isPin() const { return GetParam() != alarms; }
    std::string usable() const {
        return isPin() ? examplePins({"b", "a", "\u00E9"}) : exampleAlarms;
    }
    static std::string described(const WidgetEntry& entry) {
        foundation::JSONWriter json;
        entry.describe(json);
        return std::move(json).text();
    }
    static bool says(const WidgetEntry& entry, const std::string& member) {
        return described(entry).find(member) != std::string::npos;
    }
    static bool isIn(const WidgetEntry& entry, const std::string& state) {
        return says(entry, R"({"case":")" + state + '"');
    }
    std::string sample() { return described(widget.answer(Request::placeholder, {}).entries[0]); }
};
INSTANTIATE_TEST_SUITE_P(Every, Answers, testing::Values(alarms, metric, alarm));

TEST_P(Answers, HaveTheSampleForAPlaceholderWithoutReading) {
    put(usable());
    for (const bool preview : {false, true}) {
        const auto answer = widget.answer(Request::placeholder, {.isPreview = preview});
        EXPECT_FALSE(answer.policy);
        EXPECT_EQ(answer.entries.at(0).date.seconds, exampleNow.seconds + (preview ? 1000 : 0));
        EXPECT_EQ(described(answer.entries[0]), sample());
        EXPECT_TRUE(isIn(answer.entries[0], isPin() ? "pinned" : "watching"));
        EXPECT_TRUE(says(answer.entries[0], R"("updated":1731772800,"stale":false)"));
        time += 1000;
    }
    EXPECT_EQ(reads, 0);
}

TEST_P(Answers, AreOfTheFileOrInAPreviewWithoutDataTheSample) {
    const std::string none = isPin() ? "notPinned" : "unavailable";
    const std::string later =
        isPin() ? examplePins({"a"}, 2) : replaced(exampleAlarms, ": 1,", ": 2,");
    for (const std::string& text :
         {std::string{}, std::string{"{"}, later, examplePins({}), usable()}) {
        put(text);
        const bool isThere = text == usable();
        for (const std::optional<std::string>& choice :
             {std::optional<std::string>{}, {"e\u0301"}, {"x"}})
            for (const bool preview : {false, true}) {
                const auto answer = widget.answer(Request::snapshot, {{}, preview, choice});
                const auto& entry = answer.entries.at(0);
                const std::string ofPin = !choice          ? "choose"
                                          : *choice == "x" ? "removed"
                                                           : "pinned";
                EXPECT_EQ(entry.date, exampleNow);
                if (preview && !isThere)
                    EXPECT_EQ(described(entry), sample());
                else
                    EXPECT_TRUE(isIn(entry, !isThere ? none : isPin() ? ofPin : "watching"));
                EXPECT_EQ(says(entry, R"("label":"#2")"), isThere && isPin() && ofPin == "pinned");
                EXPECT_EQ(std::exchange(reads, 0), 1);
            }
    }
}

TEST_P(Answers, AreFiveMinutesOfOneReadingEachJudgedAtItsOwnDate) {
    tick = 7;
    const double limit = isPin() ? 600 : 180;
    for (const double age : {0.0, limit - 120, limit - 119, limit})
        for (const std::string& text : {usable(), std::string{}}) {
            put(text);
            time = exampleUpdated.seconds + age;
            const auto timeline = widget.answer(Request::timeline, {{}, true, "a"});
            EXPECT_EQ(reads, 1);
            put("");  // what was read stays
            EXPECT_EQ(timeline.policy, widgets::ReloadPolicy{exampleUpdated + (age + 300)});
            ASSERT_EQ(timeline.entries.size(), 5);
            for (int i = 0; i < 5; ++i) {
                const WidgetEntry& entry = timeline.entries[static_cast<std::size_t>(i)];
                EXPECT_EQ(entry.date, exampleUpdated + (age + 60 * i));
                EXPECT_EQ(says(entry, "\"stale\":"), !text.empty());
                EXPECT_EQ(says(entry, "\"stale\":true"), !text.empty() && age + 60 * i > limit);
            }
        }
}

TEST_P(Answers, OfferThePinsOfTheFile) {
    using Entities = std::vector<intents::AppEntity>;
    EXPECT_EQ(widget.intent.has_value(), isPin());
    if (!isPin()) return;
    const auto& intent = *widget.intent;
    const std::string metricName = GetParam() == metric ? "CPU · Sum · " : "";
    const auto pin = [&](const char* id, const char* name) {
        return intents::AppEntity{id, name, metricName + "prod · eu-west-1"};
    };
    const auto gone = [](const char* id) {
        return intents::AppEntity{id, "Removed from Tessary", ""};
    };
    put(examplePins({"b", "a", "b", "\u00E9"}));
    EXPECT_EQ(intent.suggestedEntities(),
              (Entities{pin("b", "#0"), pin("a", "#1"), pin("b", "#2"), pin("\u00E9", "#3")}));
    EXPECT_EQ(intent.defaultResult(), pin("b", "#0"));
    EXPECT_EQ(intent.entities({"a", "x", "b", "A", "x", "e\u0301", ""}),
              (Entities{pin("a", "#1"), gone("x"), pin("b", "#0"), gone("A"), gone("x"),
                        pin("\u00E9", "#3"), gone("")}));
    for (const std::string& text :
         {std::string{}, std::string{"[]"}, examplePins({"a"}, 2), examplePins({})}) {
        put(text);
        EXPECT_EQ(intent.suggestedEntities(), Entities{});
        EXPECT_EQ(intent.defaultResult(), std::nullopt);
        EXPECT_EQ(intent.entities({"a"}), Entities{gone("a")});
    }
}

}  // namespace
}  // namespace tessary::shell
