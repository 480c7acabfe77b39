// What is watched: the settings together with the AWS tools' own, and where each target is asked.
//
//     const auto watched = watchedOf(settings, Surroundings::ofProcess()).value();
//     watched.targets[0].region                              // "us-east-1"
//     surroundings.endpointOf(watched.targets[0])            // "https://monitoring.us-east-1..."
#pragma once

#include <string>
#include <vector>

#include "feed/aws/key_ring.h"
#include "feed/aws/profiles.h"
#include "feed/rounds/alarms_round.h"
#include "feed/settings/settings.h"

namespace tessary::feed {

/// The AWS tools' files and variables, as they stood when they were read.
struct Surroundings {
    aws::Profiles profiles{"", ""};
    std::string usual{};        ///< the profile that counts where none is named
    bool hasOwnKeys{};          ///< the environment's
    std::string usualRegion{};  ///< the environment's; may be empty
    std::string endpoint{};     ///< that stands in for every region's; may be empty
    bool fips{};

    static Surroundings ofProcess(const aws::KeySources& sources);

    std::string endpointOf(const rounds::Target& target) const;
    /// What to type to sign in anew.
    std::string remedyOf(const std::string& profile) const;
};

struct Watched {
    std::vector<rounds::Target> targets{};  ///< each profile and region once
    bool isUsual{};  ///< the settings name none: the environment's keys count, too
    bool operator==(const Watched&) const = default;
};

/// Nothing where the settings watch nothing, and the AWS tools have no profile or no region that
/// counts by itself. A fault where a profile's region is wanted and none is known.
foundation::Result<Watched> watchedOf(const settings::Settings& settings,
                                      const Surroundings& surroundings);

}  // namespace tessary::feed
