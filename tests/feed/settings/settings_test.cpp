#include "feed/settings/settings.h"

#include <gtest/gtest.h>

#include "support/golden.h"

namespace tessary::settings {
namespace {

std::string told(const Settings& settings) {
    std::string said = "every " + std::to_string(settings.interval) + " s" +
                       (settings.notify ? ", notifies\n" : "\n");
    const auto row = [&](std::initializer_list<std::string> words) {
        for (const auto& word : words) said += word + " | ";
        said += '\n';
    };
    for (const auto& [profile, regions, ignore] : settings.watch) {
        row({"watch", profile});
        for (const auto& region : regions) row({"  in", region});
        for (const auto& pattern : ignore) row({"  but", pattern});
    }
    for (const auto& [id, label, profile, region, name] : settings.alarms)
        row({"alarm", id, label, profile, region, name});
    for (const auto& pin : settings.metrics) {
        row({"metric", pin.id, pin.label, pin.profile, pin.region, pin.namespace_, pin.name,
             pin.statistic, std::to_string(pin.period)});
        for (const auto& [name, value] : pin.dimensions) row({"  of", name, value});
    }
    return said;
}

/// A case is a file; " / " ends a line.
TEST(Settings, AreReadOrRefusedByLine) {
    expectTranscript("settings.txt", [](const std::string& line) {
        const auto settings = parseSettings(replaced(unescaped(line), " / ", "\n"), "feed.toml");
        return settings ? told(*settings) : settings.fault().message();
    });
}

}  // namespace
}  // namespace tessary::settings
