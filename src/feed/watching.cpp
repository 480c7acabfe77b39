#include "feed/watching.h"

#include <algorithm>
#include <utility>

#include "feed/additions/additions.h"
#include "feed/aws/endpoint.h"
#include "feed/aws/shell_words.h"
#include "feed/notes.h"
#include "feed/rounds/listing.h"
#include "feed/service.h"
#include "feed/session.h"
#include "platform/foundation/joined.h"
#include "platform/foundation/nearest.h"
#include "platform/foundation/visible_text.h"

namespace tessary::feed {

using additions::Additions;
using foundation::Fault;
using foundation::Result;
using foundation::visible;
using rounds::Place;
using Places = std::vector<Place>;

namespace {

// ---- watch

std::string waysIn(const aws::Profile& profile) {
    switch (profile.signIn()) {
        case aws::SignIn::keys: return "keys in the AWS tools' files";
        case aws::SignIn::process: return "keys that a program prints";
        case aws::SignIn::sso: return "a sign-in with a browser: " + visible(profile.remedy());
        case aws::SignIn::tool: return "keys that the AWS command line fetches";
    }
    return "";
}

/// One that says nothing of how to sign in is only settings.
bool isUsable(const aws::Profile& profile) {
    return profile.signIn() != aws::SignIn::tool || profile.setting("role_arn") ||
           profile.setting("web_identity_token_file") || profile.setting("credential_source") ||
           profile.setting("login_session");
}

std::string regionOf(const aws::Profile& profile, const Plan& plan) {
    return profile.setting("region").value_or(plan.surroundings.usualRegion);
}

std::string choices(const std::vector<const aws::Profile*>& profiles, const Plan& plan) {
    std::string lines = "Name one of these: tessary-widgets-feed watch PROFILE\n";
    for (const auto* profile : profiles) {
        const auto region = regionOf(*profile, plan);
        lines += "  " + visible(profile->name) + " · " +
                 (region.empty() ? "no region" : visible(region)) + ": " + waysIn(*profile) + "\n";
    }
    return lines;
}

Result<Places> placesOf(const aws::Profile& profile, std::vector<std::string> regions,
                        const Plan& plan) {
    if (regions.empty()) regions = {regionOf(profile, plan)};
    if (!aws::isRegion(regions.front()))
        return Fault{"the profile '" + visible(profile.name) + "' has no region: name one, as in " +
                     "'tessary-widgets-feed watch " + visible(aws::shellWord(profile.name)) +
                     " us-east-1'"};
    Places places;
    for (const auto& region : regions)
        if (const Place place{profile.name, region};
            std::ranges::find(places, place) == places.end())
            places.push_back(place);
    return places;
}

std::vector<const aws::Profile*> usable(const Plan& plan) {
    std::vector<const aws::Profile*> usable;
    for (const auto& profile : plan.surroundings.profiles.all())
        if (isUsable(profile)) usable.push_back(&profile);
    return usable;
}

Fault noProfile(const Plan& plan) {
    const char* const own = "; the keys of this shell count only as long as nothing is watched";
    return {"the AWS tools know no profile with a way to sign in: 'aws configure' makes one" +
            std::string{plan.surroundings.hasOwnKeys ? own : ""}};
}

Places watchedPlaces(const Plan& plan) {
    Places places;
    for (const auto& [profile, region, ignore] : plan.watched.targets)
        places.push_back({profile, region});
    return places;
}

Result<Places> placesOf(const WatchCall& call, const Plan& plan) {
    if (!call.profile.empty())
        return knownProfile(call.profile, plan).andThen([&](const aws::Profile* profile) {
            return placesOf(*profile, call.regions, plan);
        });
    if (call.enable && !plan.settings.watch.empty()) return watchedPlaces(plan);
    const auto profiles = usable(plan);
    if (profiles.empty()) return noProfile(plan);
    return placesOf(*profiles.front(), {}, plan);
}

bool isUndecided(const WatchCall& call, const Plan& plan) {
    const bool isWatched = call.enable && !plan.settings.watch.empty();
    return call.profile.empty() && !isWatched && usable(plan).size() > 1;
}

/// What is watched already stays where it stands.
Result<void> add(const Places& places, const Session& session) {
    const auto known = session.plan.watched.isUsual ? Places{} : watchedPlaces(session.plan);
    return additions::change(session.paths.additions, [&](Additions& added) {
        for (const auto& place : places) {
            if (std::ranges::find(known, place) != known.end()) continue;
            auto watch = std::ranges::find(added.watch, place.profile, &settings::Watch::profile);
            if (watch == added.watch.end())
                watch = added.watch.insert(watch, {.profile = place.profile});
            if (std::ranges::find(watch->regions, place.region) == watch->regions.end())
                watch->regions.push_back(place.region);
        }
        return Result<void>{};
    });
}

rounds::Target targetOf(const Place& place, const Plan& plan) {
    for (const auto& target : plan.watched.targets)
        if (place == Place{target.profile, target.region}) return target;
    return {place.profile, place.region};
}

/// Whether some were asked, or wait for a sign-in.
bool tellFiring(const Places& places, Session& session) {
    const auto findings =
        session.asker.search(session.plan.surroundings, places, aws::AlarmsQuery{});
    for (const auto& fault : rounds::faultsOf(findings)) complain(fault);
    bool isAsked = false;
    for (const auto& finding : findings) {
        isAsked = isAsked || !finding.fault || finding.authExpired;
        if (finding.fault) continue;
        const auto count = rounds::census(finding, targetOf(finding.place, session.plan));
        printed(nameOf(finding.place) + ": " + std::to_string(count.firing) + " of " +
                std::to_string(count.all) + (finding.isCut ? "+" : "") + " alarms firing\n");
    }
    return isAsked;
}

void tellNext(bool isFeedRunning) {
    if (!isFeedRunning)
        printed("Next: 'tessary-widgets-feed watch --enable' asks every minute from now on\n");
    printed("Next: 'tessary-widgets-desktop --gallery' shows the widgets\n");
}

int watchIn(Session& session, const WatchCall& call) {
    if (isUndecided(call, session.plan)) {
        printed(choices(usable(session.plan), session.plan));
        return failed;
    }
    const auto places = placesOf(call, session.plan);
    if (!places) return complained(places.fault(), failed);
    const auto added = add(*places, session);
    if (!added) return complained(added.fault(), failed);
    const auto renewed = session.renew();
    if (!renewed) return complained(renewed.fault(), failed);
    const bool isAsked = tellFiring(*places, session);
    const bool isEnabled = call.enable && enableService();
    if (call.enable && !isEnabled) return failed;
    tellNext(isEnabled || !*renewed);
    return isAsked ? done : failed;
}

// ---- unwatch

std::string profilesOf(const Additions& added) {
    return foundation::joined(added.watch, ", ",
                              [](const settings::Watch& watch) { return visible(watch.profile); });
}

Result<std::string> profileOf(const UnwatchCall& call, const Additions& added) {
    if (!call.profile.empty()) return call.profile;
    if (added.watch.size() == 1) return added.watch.front().profile;
    if (added.watch.empty()) return Fault{"nothing is watched that 'watch' has added"};
    return Fault{"several profiles are watched, name one: " + profilesOf(added)};
}

/// Why there is nothing to take out.
Fault notAdded(const Place& place, const Session& session, const Additions& added) {
    const bool isWritten =
        std::ranges::any_of(session.plan.written.watch, [&](const settings::Watch& watch) {
            const auto& regions = watch.regions;
            return watch.profile == place.profile &&
                   (place.region.empty() || regions.empty() ||
                    std::ranges::find(regions, place.region) != regions.end());
        });
    const auto name = place.region.empty() ? visible(place.profile) : nameOf(place);
    if (isWritten)
        return {name + " stands in " + session.paths.settings.string() + ": take it out there"};
    return {name + " is not watched" +
            visible(foundation::didYouMean(place.profile, added.watch, &settings::Watch::profile))};
}

Result<void> takeOut(const UnwatchCall& call, const Session& session, Additions& added,
                     Places& gone) {
    const auto profile = profileOf(call, added);
    if (!profile) return profile.fault();
    const auto watch = std::ranges::find(added.watch, *profile, &settings::Watch::profile);
    if (watch == added.watch.end()) return notAdded({*profile, ""}, session, added);
    const auto regions = call.regions.empty() ? watch->regions : call.regions;
    for (const auto& region : regions) {
        const Place place{*profile, region};
        if (std::erase(watch->regions, region) == 0) return notAdded(place, session, added);
        gone.push_back(place);
    }
    if (watch->regions.empty()) added.watch.erase(watch);
    return {};
}

int unwatchIn(Session& session, const UnwatchCall& call) {
    Places gone;
    const auto changed = additions::change(session.paths.additions, [&](Additions& added) {
        return takeOut(call, session, added, gone);
    });
    if (!changed) return complained(changed.fault(), failed);
    const auto renewed = session.renew();
    if (!renewed) return complained(renewed.fault(), failed);
    for (const auto& place : gone) printed(nameOf(place) + " is not watched any more\n");
    const auto plan = loadPlan(session.paths, session.sources);
    if (plan && plan->watched.isUsual)
        printed("Nothing is named: now the AWS tools' own choice is watched, " +
                nameOf(watchedPlaces(*plan).front()) + "\n");
    return done;
}

}  // namespace

int watch(const WatchCall& call) {
    return inSession(call.given, [&](Session& session) { return watchIn(session, call); });
}

int unwatch(const UnwatchCall& call) {
    return inSession(call.given, [&](Session& session) { return unwatchIn(session, call); });
}

}  // namespace tessary::feed
