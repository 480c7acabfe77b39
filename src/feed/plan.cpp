#include "feed/plan.h"

#include <optional>
#include <utility>

#include "feed/additions/additions.h"
#include "platform/system/files.h"
#include "platform/system/folders.h"
#include "snapshot/alarms_snapshot.h"
#include "snapshot/source.h"

namespace tessary::feed {

namespace fs = std::filesystem;
using foundation::Fault;
using foundation::Result;
using snapshot::AlarmsSnapshot;

namespace {

/// Of the feed's own, in one of the user's folders.
Result<fs::path> ownFile(const std::optional<fs::path>& folder, const char* name) {
    if (!folder) return Fault{"no home is known: HOME has to be an absolute path"};
    return *folder / "tessary-widgets" / name;
}

Result<fs::path> settingsFile(const Given& given) {
    if (given.settings) return *given.settings;
    return ownFile(system::settingsFolder(), "feed.toml");
}

Result<fs::path> containerOf(const Given& given) {
    const snapshot::Source source{.places = snapshot::Places::given(given.container, given.info)};
    const auto location = source.locate(AlarmsSnapshot::fileName);
    if (location.container) return *location.container;
    return Fault{"no container is known: 'tessary-widgets check' says what is wrong"};
}

Result<settings::Settings> loadSettings(const Paths& paths) {
    const auto text = system::readFile(paths.settings);
    if (text) return settings::parseSettings(*text, paths.settings.string());
    if (text.fault() == system::absent() && !paths.settingsAreGiven) return settings::Settings{};
    return Fault{paths.settings.string() + ": " + text.fault().message()};
}

}  // namespace

Result<fs::path> memoryFile() { return ownFile(system::stateFolder(), "feed.json"); }

Result<Paths> Paths::find(const Given& given) {
    return settingsFile(given).andThen([&](const fs::path& toml) {
        return memoryFile().andThen([&](const fs::path& json) {
            return containerOf(given).transform([&](const fs::path& folder) {
                return Paths{toml, given.settings.has_value(), json.parent_path() / "pins.json",
                             json, folder};
            });
        });
    });
}

fs::path Paths::alarms() const { return container / snapshot::pathOf(AlarmsSnapshot::fileName); }

bool Plan::isIdle() const {
    return watched.targets.empty() && settings.alarms.empty() && settings.metrics.empty();
}

Result<Plan> loadPlan(const Paths& paths, const aws::KeySources& sources) {
    return loadSettings(paths).andThen([&](const settings::Settings& written) {
        return additions::load(paths.additions).andThen([&](const additions::Additions& added) {
            auto all = additions::merged(written, added);
            auto around = Surroundings::ofProcess(sources);
            return watchedOf(all, around).transform([&](Watched watched) {
                return Plan{std::move(all), written, std::move(around), std::move(watched)};
            });
        });
    });
}

std::string whyNothing(const Plan& plan, const Paths& paths) {
    if (!plan.isIdle()) return "nothing is written before a target has answered";
    return "nothing is watched: 'tessary-widgets-feed watch' adds a profile, as [[watch]] in " +
           paths.settings.string() + " does";
}

}  // namespace tessary::feed
