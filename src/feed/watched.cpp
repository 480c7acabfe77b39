#include "feed/watched.h"

#include <algorithm>
#include <cstdlib>
#include <initializer_list>

#include "feed/aws/endpoint.h"
#include "platform/foundation/visible_text.h"
#include "platform/system/files.h"

namespace tessary::feed {

using foundation::Fault;
using foundation::Result;
using foundation::visible;
using rounds::Target;

namespace {

/// The first that is set, and not empty.
std::string variable(std::initializer_list<const char*> names) {
    for (const char* const name : names)
        if (const char* const value = std::getenv(name); value != nullptr && *value != '\0')
            return value;
    return "";
}

std::string textOf(const std::filesystem::path& file) {
    auto text = system::readFile(file);
    return text ? *std::move(text) : "";
}

std::string settingOf(const Surroundings& around, const std::string& profile, const char* key) {
    const auto* const known = around.profiles.find(profile);
    return known == nullptr ? "" : known->setting(key).value_or("");
}

Result<Watched> usualOf(const Surroundings& around) {
    auto region = around.usualRegion;
    if (region.empty()) region = settingOf(around, around.usual, "region");
    const bool hasKeys = around.hasOwnKeys || around.profiles.find(around.usual) != nullptr;
    if (!hasKeys || region.empty()) return Watched{};
    if (!aws::isRegion(region)) return Fault{"'" + visible(region) + "' is no region"};
    const settings::Watch usual{.profile = around.usual};
    return Watched{{{usual.profile, region, usual.ignore}}, true};
}

Result<std::vector<std::string>> regionsOf(const settings::Watch& watch,
                                           const Surroundings& around) {
    if (!watch.regions.empty()) return watch.regions;
    const auto region = settingOf(around, watch.profile, "region");
    if (region.empty())
        return Fault{"the profile '" + visible(watch.profile) +
                     "' has no region: name its regions in [[watch]]"};
    if (!aws::isRegion(region)) return Fault{"'" + visible(region) + "' is no region"};
    return std::vector{region};
}

bool isSame(const Target& a, const Target& b) {
    return a.profile == b.profile && a.region == b.region;
}

}  // namespace

Surroundings Surroundings::ofProcess(const aws::KeySources& sources) {
    return {.profiles = {textOf(sources.config), textOf(sources.credentials)},
            .usual = sources.usual,
            .hasOwnKeys = sources.own.has_value(),
            .usualRegion = variable({"AWS_REGION", "AWS_DEFAULT_REGION"}),
            .endpoint = variable({"AWS_ENDPOINT_URL_CLOUDWATCH", "AWS_ENDPOINT_URL"}),
            .fips = variable({"AWS_USE_FIPS_ENDPOINT"}) == "true"};
}

std::string Surroundings::endpointOf(const Target& target) const {
    if (!endpoint.empty()) return endpoint;
    auto own = settingOf(*this, target.profile, "endpoint_url");
    return own.empty() ? aws::cloudWatchURL(target.region, fips) : own;
}

std::string Surroundings::remedyOf(const std::string& profile) const {
    const auto* const known = profiles.find(profile);
    return known == nullptr ? "" : visible(known->remedy());
}

Result<Watched> watchedOf(const settings::Settings& settings, const Surroundings& around) {
    if (settings.watch.empty()) return usualOf(around);
    Watched watched;
    for (const auto& watch : settings.watch) {
        const auto regions = regionsOf(watch, around);
        if (!regions) return regions.fault();
        for (const auto& region : *regions) {
            const Target target{watch.profile, region, watch.ignore};
            const auto same = [&](const Target& other) { return isSame(target, other); };
            if (std::ranges::none_of(watched.targets, same)) watched.targets.push_back(target);
        }
    }
    return watched;
}

}  // namespace tessary::feed
