#include "feed/links/console.h"

#include <optional>

#include "feed/aws/endpoint.h"
#include "platform/foundation/json_writing.h"
#include "platform/foundation/percent_encoding.h"
#include "platform/foundation/visible_text.h"

namespace tessary::links {

using foundation::Fault;
using foundation::JSONWriter;
using foundation::percentEncoded;

namespace {

constexpr const char* deepLink = "/cloudwatch/deeplink.js";

std::string graphOf(const settings::MetricPin& pin) {
    JSONWriter json;
    const auto metric = [&] {
        json.value(pin.namespace_).value(pin.name);
        for (const auto& [name, value] : pin.dimensions) json.value(name).value(value);
        json.object([&] { json.member("stat", pin.statistic).member("period", pin.period); });
    };
    json.object([&] {
        json.member("view", "timeSeries").member("stacked", false).member("region", pin.region);
        json.member("start", "-PT3H").member("end", "P0D");
        json.key("metrics").array([&] { json.array(metric); });
    });
    return std::move(json).text();
}

/// A setting of the profile, or of the session that it names.
std::optional<std::string> settingOf(const aws::Profile& profile, const std::string& key) {
    if (auto own = profile.setting(key)) return own;
    const auto shared = profile.session.find(key);
    return shared == profile.session.end() ? std::nullopt : std::optional{shared->second};
}

/// Where a profile signs in, without what its page puts behind it; none where that is no web page.
std::optional<std::string> startPage(const aws::Profile& profile) {
    auto url = settingOf(profile, "sso_start_url").value_or("");
    url = url.substr(0, url.find('#'));
    while (url.ends_with('/')) url.pop_back();
    return url.starts_with("https://") ? std::optional{url} : std::nullopt;
}

/// By way of the profile's start page, where it has one.
std::string inAccount(const aws::Profile& profile, const std::string& page) {
    const auto start = startPage(profile);
    const auto account = profile.setting("sso_account_id");
    const auto role = profile.setting("sso_role_name");
    if (profile.signIn() != aws::SignIn::sso || !start || !account || !role) return page;
    return *start + "/#/console?account_id=" + percentEncoded(*account) +
           "&role_name=" + percentEncoded(*role) + "&destination=" + percentEncoded(page);
}

}  // namespace

Console::Page Console::alarms(const Place& place) const {
    return page(place, "/cloudwatch/home", "alarmsV2:");
}

Console::Page Console::alarm(const AlarmLink& link) const {
    return page({link.profile, link.region}, deepLink,
                "alarmsV2:alarm/" + percentEncoded(link.name));
}

Console::Page Console::metric(const settings::MetricPin& pin) const {
    return page({pin.profile, pin.region}, deepLink,
                "metricsV2:graph=" + percentEncoded(graphOf(pin)));
}

Console::Page Console::page(const Place& place, const char* path,
                            const std::string& fragment) const {
    const auto host = aws::isRegion(place.region) ? aws::consoleHost(place.region) : std::nullopt;
    if (!host)
        return Fault{"nothing is known of a console in '" + foundation::visible(place.region) +
                     "'"};
    const auto url = "https://" + *host + path + "?region=" + place.region + "#" + fragment;
    const auto* const profile = profiles_.find(place.profile);
    return profile == nullptr ? url : inAccount(*profile, url);
}

}  // namespace tessary::links
