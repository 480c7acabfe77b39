// What a command that changes or searches works with, and how its changes reach the files.
//
//     return inSession(call.given, [&](Session& session) {
//         const auto places = session.places({.profile = "prod"});      // those of it that are watched
//         const auto renewed = session.renew();                         // after a change
//         return done;
//     });
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "feed/asker.h"
#include "feed/aws/key_ring.h"
#include "feed/command.h"
#include "feed/plan.h"
#include "feed/rounds/search.h"
#include "platform/foundation/result.h"

namespace tessary::feed {

struct Session {
    Paths paths;
    aws::KeySources sources;
    Plan plan;
    Asker asker{sources};

    /// Where a call looks: what it names, else all of it that is watched, and in a region that
    /// none is watched in every watched profile. A fault where that is nowhere.
    foundation::Result<std::vector<rounds::Place>> places(const rounds::Place& named) const;

    /// After a change: makes the round that it asks for and writes the files, and another where
    /// something was changed meanwhile. Whether it did: a feed that runs does so itself.
    foundation::Result<bool> renew();
};

/// The status of `act`, or of a plan that cannot be made.
int inSession(const Given& given, const std::function<int(Session&)>& act);

/// A profile that is known; a fault names the nearest.
foundation::Result<const aws::Profile*> knownProfile(const std::string& name, const Plan& plan);

/// "prod · us-east-1"
std::string nameOf(const rounds::Place& place);

}  // namespace tessary::feed
