// What a feed is to do, and where its files lie.
//
//     const auto paths = Paths::find({.container = "/tmp/c"}).value();
//     const auto plan = loadPlan(paths, aws::KeySources::ofEnvironment()).value();
//     plan.isIdle() ? whyNothing(plan, paths) : ""
#pragma once

#include <filesystem>
#include <string>

#include "feed/aws/key_ring.h"
#include "feed/command.h"
#include "feed/settings/settings.h"
#include "feed/watched.h"
#include "platform/foundation/result.h"

namespace tessary::feed {

struct Paths {
    std::filesystem::path settings{};
    bool settingsAreGiven{};  ///< those that are not may be missing
    std::filesystem::path additions{};
    std::filesystem::path memory{};
    std::filesystem::path container{};

    /// A fault where no home or no container is known.
    static foundation::Result<Paths> find(const Given& given);

    std::filesystem::path alarms() const;
};

/// Where the feed remembers, in the user's state folder.
foundation::Result<std::filesystem::path> memoryFile();

struct Plan {
    settings::Settings settings{};  ///< with what was added to them
    settings::Settings written{};   ///< without
    Surroundings surroundings{};
    Watched watched{};

    /// Nothing is watched, and nothing pinned.
    bool isIdle() const;
};

/// What the settings, the additions to them and the AWS tools' files say now. A fault where they
/// cannot be read or are wrong; settings that are not there are those that watch nothing.
foundation::Result<Plan> loadPlan(const Paths& paths, const aws::KeySources& sources);

/// Why a round brought no file.
std::string whyNothing(const Plan& plan, const Paths& paths);

}  // namespace tessary::feed
