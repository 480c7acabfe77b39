#include "feed/watched.h"

#include <gtest/gtest.h>

namespace tessary::feed {
namespace {

const Surroundings around{
    .profiles = {"[profile prod]\nregion = eu-west-1\nendpoint_url = http://own\n"
                 "[profile dev]\nregion = US\n[default]\n",
                 ""},
    .usual = "prod"};

/// "prod/eu-west-1 ", for each target, "usual" where the settings name none; or the fault.
std::string shown(const std::string& settings, const Surroundings& where) {
    const auto watched = watchedOf(settings::parseSettings(settings, "f").value(), where);
    if (!watched) return watched.fault().message();
    std::string text;
    for (const auto& target : watched->targets) text += target.profile + '/' + target.region + ' ';
    return text + (watched->isUsual ? "usual" : "");
}

std::string watch(const std::string& profile, const std::string& more = "") {
    return "[[watch]]\nprofile = '" + profile + "'\n" + more + "\n";
}

TEST(Watched, IsWhatTheSettingsNameOrTheToolsOwn) {
    Surroundings named = around, bare = around, keys{.usual = "default", .hasOwnKeys = true};
    named.usualRegion = "us-east-1";
    bare.usual = "default";
    const std::tuple<std::string, Surroundings, std::string> cases[] = {
        {"", around, "prod/eu-west-1 usual"},
        {"", named, "prod/us-east-1 usual"},
        {"", bare, ""},
        {"", keys, ""},
        {watch("prod"), named, "prod/eu-west-1 "},
        {watch("prod") + watch("prod", "regions = ['b', 'eu-west-1', 'b']"), around,
         "prod/eu-west-1 prod/b "},
        {watch("dev"), around, "'US' is no region"},
        {watch("x"), around, "the profile 'x' has no region: name its regions in [[watch]]"},
    };
    for (const auto& [settings, where, expected] : cases)
        EXPECT_EQ(shown(settings, where), expected) << settings;
}

TEST(Watched, IsAskedWhereTheToolsSay) {
    const auto of = [](const std::string& profile, const Surroundings& where) {
        return where.endpointOf({profile, "eu-west-1", {}});
    };
    EXPECT_EQ(of("prod", around), "http://own");
    EXPECT_EQ(of("dev", around), "https://monitoring.eu-west-1.amazonaws.com");
    for (const char* name : {"AWS_ENDPOINT_URL", "AWS_ENDPOINT_URL_CLOUDWATCH"}) {
        ::setenv(name, name, 1);
        EXPECT_EQ(of("prod", Surroundings::ofProcess({})), name);
    }
}

}  // namespace
}  // namespace tessary::feed
