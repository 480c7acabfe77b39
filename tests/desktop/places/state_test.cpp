#include "desktop/places/state.h"

#include <gtest/gtest.h>

#include "support/container.h"

namespace tessary::places {
namespace {

namespace fs = std::filesystem;

const std::vector<PlacedWidget> widgets{
    {1, *kindNamed("alarms"), Family::small, std::nullopt, *parsePlace("20,20")},
    {7,
     "org.example.unknown",
     Family::medium,
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
    EXPECT_TRUE(loadWidgets(file_).empty());
    for (const auto& saved : {widgets, std::vector<PlacedWidget>{}, widgets}) {
        saveWidgets(file_, saved);
        EXPECT_EQ(loadWidgets(file_), saved);
    }
}

TEST_F(State, IsReplacedAsAWhole) {
    saveWidgets(file_, widgets);
    const auto before = contents(file_);
    fs::create_hard_link(file_, file_ + ".link");
    saveWidgets(file_, {});
    EXPECT_EQ(contents(file_ + ".link"), before);
    fs::remove(file_ + ".link");
    EXPECT_EQ(std::distance(fs::directory_iterator{container_ / "config"}, {}), 1);
    EXPECT_THROW(saveWidgets(file_ + "/desktop.json", widgets), std::runtime_error);
    EXPECT_EQ(contents(file_), encodeWidgets({}));
}

TEST_F(State, SetsAsideWhatItCannotRead) {
    fs::create_directory(container_ / "config");
    for (const std::string bad : {"", "{\"widgets\": [{}]}"}) {
        std::ofstream{file_} << bad;
        EXPECT_TRUE(loadWidgets(file_).empty());
        EXPECT_FALSE(fs::exists(file_));
    }
    fs::create_directory(file_);
    EXPECT_TRUE(loadWidgets(file_).empty());
    EXPECT_EQ(contents(file_ + ".unreadable-1"), "");
    EXPECT_EQ(contents(file_ + ".unreadable-2"), "{\"widgets\": [{}]}");
    EXPECT_TRUE(fs::is_directory(file_ + ".unreadable-3"));
}

TEST(StateText, AcceptsNothingHalfUnderstood) {
    const std::string good = encodeWidgets(widgets);
    ASSERT_EQ(decodeWidgets(good), widgets);
    const std::pair<const char*, const char*> faults[] = {
        {"\"number\"", "\"nummer\""},
        {": 7", ": 0"},
        {": 7", ": 1"},
        {": 7", ": 7.5"},
        {"\"small\"", "\"big\""},
        {"\"pin\": null", "\"pin\": 3"},
        {"\"monitor\": null", "\"monitor\": {}"},
        {"\"connector\"", "\"plug\""},
        {"\"right\"", "\"bottom\""},
        {"\"pin\"", "\"needle\""},
        {"100000", "100001"},
        {": 5", ": -5"},
        {": 5", ": \"5\""},
        {"\"x\"", "\"z\""},
        {"\"widgets\"", "\"w\""},
        {"[", "{"},
    };
    for (auto [from, to] : faults) {
        auto bad = good;
        for (auto& letter : bad) letter = letter == '\t' ? ' ' : letter;
        while (bad.find(" :") != bad.npos) bad.erase(bad.find(" :"), 1);
        ASSERT_EQ(decodeWidgets(bad), widgets);
        ASSERT_NE(bad.find(from), bad.npos) << from;
        bad.replace(bad.find(from), std::string{from}.size(), to);
        EXPECT_EQ(decodeWidgets(bad), std::nullopt) << from << " as " << to;
    }
    for (std::size_t end = 0; end + 2 < good.size(); ++end)
        EXPECT_EQ(decodeWidgets(good.substr(0, end)), std::nullopt) << end;
}

}  // namespace
}  // namespace tessary::places
