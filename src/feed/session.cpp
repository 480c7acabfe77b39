#include "feed/session.h"

#include <algorithm>
#include <set>
#include <utility>

#include "feed/aws/endpoint.h"
#include "feed/notes.h"
#include "feed/store/store.h"
#include "platform/foundation/nearest.h"
#include "platform/foundation/visible_text.h"
#include "platform/system/files.h"

namespace tessary::feed {

using foundation::Fault;
using foundation::Result;
using foundation::visible;
using rounds::Place;
using store::Store;

namespace {

/// A profile of which nothing is watched, in its own region.
Result<std::vector<Place>> ownPlace(const std::string& name, const Plan& plan) {
    const auto profile = knownProfile(name, plan);
    if (!profile) return profile.fault();
    const auto region = (*profile)->setting("region").value_or(plan.surroundings.usualRegion);
    if (aws::isRegion(region)) return std::vector{Place{name, region}};
    return Fault{"the profile '" + visible(name) + "' has no region: name one with --region"};
}

/// One round where nobody else makes them.
Result<bool> renewedOnce(Session& session) {
    const auto& container = session.paths.container;
    const auto store = Store::open(container, session.paths.memory);
    if (!store && store.fault() == Store::taken(container)) return false;
    if (!store) return store.fault();
    auto plan = loadPlan(session.paths, session.sources);
    if (!plan) return plan.fault();
    session.plan = *std::move(plan);
    const auto made =
        session.asker.round(session.plan, session.paths, store::remembered(session.paths.memory));
    const auto written = made.write(*store).andThen([&] { return store->remember(made.memory); });
    if (!written) return written.fault();
    return true;
}

}  // namespace

Result<std::vector<Place>> Session::places(const Place& named) const {
    if (!named.profile.empty() && !named.region.empty())
        return knownProfile(named.profile, plan).transform([&](const aws::Profile*) {
            return std::vector{named};
        });
    std::vector<Place> places;
    std::set<std::string> profiles;
    for (const auto& [profile, region, ignore] : plan.watched.targets) {
        const bool isMeant = named.profile.empty() || named.profile == profile;
        const bool isNew = named.region.empty() || profiles.insert(profile).second;
        if (isMeant && isNew)
            places.push_back({profile, named.region.empty() ? region : named.region});
    }
    if (!places.empty()) return places;
    if (!named.profile.empty()) return ownPlace(named.profile, plan);
    return Fault{whyNothing({}, paths)};
}

/// The change that another made in between is found once the store is free again: whoever made it
/// relies on this process as long as it is not.
Result<bool> Session::renew() {
    for (;;) {
        const auto seen = system::readFile(paths.additions);
        auto renewed = renewedOnce(*this);
        if (!renewed || !*renewed || system::readFile(paths.additions) == seen) return renewed;
    }
}

int inSession(const Given& given, const std::function<int(Session&)>& act) {
    auto paths = Paths::find(given);
    if (!paths) return complained(paths.fault(), failed);
    auto sources = aws::KeySources::ofEnvironment();
    auto plan = loadPlan(*paths, sources);
    if (!plan) return complained(plan.fault(), wrongCall);
    Session session{*std::move(paths), std::move(sources), *std::move(plan)};
    return act(session);
}

Result<const aws::Profile*> knownProfile(const std::string& name, const Plan& plan) {
    const auto& profiles = plan.surroundings.profiles;
    if (const auto* profile = profiles.find(name)) return profile;
    return Fault{"no profile '" + visible(name) + "' is known to the AWS tools" +
                 visible(foundation::didYouMean(name, profiles.all(), &aws::Profile::name))};
}

std::string nameOf(const Place& place) {
    return visible(place.profile) + " · " + visible(place.region);
}

}  // namespace tessary::feed
