#include "desktop/places/state.h"

#include <gtest/gtest.h>

#include "support/container.h"

namespace tessary::places {
namespace {

namespace fs = std::filesystem;

const std::vector<PlacedWidget> widgets{
    {1, "alarms", {"small", {164, 164}}, std::nullopt, *parsePlace("20,20")},
    {7,
     "org.example.unknown",
     {"huge", {700, 10'000}},
     "a \"b\" \\ ü\n",
     {MonitorName{"Maker", "", "DP-1"}, {From::end, 5}, {From::end, 100'000}}},
};

std::string contents(const fs::path& file) {
    std::ifstream in{file};
    return {std::istreambuf_iterator<char>{in}, {}};
}

class State : public testing::Test {
protected:
    Container container_{};
    std::string file_ = container_ / "config" / "desktop.json";
};

TEST_F(State, ComesBackAsItWasSaved) {
    EXPECT_TRUE(loadWidgets(file_)->empty());
    for (const auto& saved : {widgets, std::vector<PlacedWidget>{}, widgets}) {
        EXPECT_TRUE(saveWidgets(file_, saved));
        EXPECT_EQ(*loadWidgets(file_), saved);
    }
    EXPECT_FALSE(saveWidgets(file_ + "/desktop.json", {}));
    EXPECT_EQ(contents(file_), encodeWidgets(widgets));
}

TEST_F(State, SetsAsideWhatItCannotRead) {
    fs::create_directory(container_ / "config");
    for (const std::string bad : {"", "{\"widgets\": [{}]}"}) {
        std::ofstream{file_} << bad;
        EXPECT_TRUE(loadWidgets(file_)->empty());
        EXPECT_FALSE(fs::exists(file_));
    }
    fs::create_directory(file_);
    EXPECT_TRUE(loadWidgets(file_)->empty());
    EXPECT_EQ(contents(file_ + ".unreadable-1"), "");
    EXPECT_EQ(contents(file_ + ".unreadable-2"), "{\"widgets\": [{}]}");
    EXPECT_TRUE(fs::is_directory(file_ + ".unreadable-3"));
}

TEST(StateText, IsUnderstoodAsItWasWrittenBeforeItToldSizes) {
    const auto text = [](const std::string& family) {
        return R"({"widgets":[{"number":1,"widget":"k","family":")" + family +
               R"(","pin":null,"place":{"monitor":null,"x":{"from":"left","points":0},)"
               R"("y":{"from":"bottom","points":7}}}]})";
    };
    const Place place{.y = {From::end, 7}};
    EXPECT_EQ(decodeWidgets(text("small"))->at(0),
              (PlacedWidget{1, "k", {"small", {164, 164}}, std::nullopt, place}));
    EXPECT_EQ(decodeWidgets(text("medium"))->at(0).family.size, (Size{344, 164}));
    EXPECT_EQ(decodeWidgets(text("large")), std::nullopt);
}

TEST(StateText, AcceptsNothingHalfUnderstood) {
    const std::string good = encodeWidgets(widgets);
    ASSERT_EQ(decodeWidgets(good), widgets);
    const std::pair<const char*, const char*> faults[] = {
        {": 7,", ": 0,"},         {": 7,", ": 1,"},          {": 700", ": 0"},
        {": 10000", ": 10001"},   {"\"pin\"", "\"needle\""}, {"\"monitor\": null", "\"m\": 0"},
        {"\"right\"", "\"top\""}, {"100000", "100001"},      {": 5", ": -5"},
    };
    for (auto [from, to] : faults) {
        auto bad = good;
        ASSERT_NE(bad.find(from), bad.npos) << from;
        bad.replace(bad.find(from), std::string{from}.size(), to);
        EXPECT_EQ(decodeWidgets(bad), std::nullopt) << from << " as " << to;
    }
}

}  // namespace
}  // namespace tessary::places
