#include "feed/aws/profiles.h"

#include <algorithm>
#include <map>

#include "feed/aws/shell_words.h"

namespace tessary::aws {

std::optional<std::string> Profile::setting(const std::string& key) const {
    const auto found = settings.find(key);
    if (found == settings.end() || found->second.empty()) return std::nullopt;
    return found->second;
}

SignIn Profile::signIn() const {
    const auto has = [&](const char* key) { return setting(key).has_value(); };
    if (has("role_arn") || has("web_identity_token_file")) return SignIn::tool;
    if (has("sso_session") || has("sso_start_url")) return SignIn::sso;
    if (has("aws_access_key_id") && has("aws_secret_access_key")) return SignIn::keys;
    return has("credential_process") ? SignIn::process : SignIn::tool;
}

std::string Profile::remedy() const {
    const bool isOwn =
        setting("role_arn") || setting("web_identity_token_file") || signIn() == SignIn::process;
    const char* const command = signIn() == SignIn::sso ? "aws sso login"
                                : isOwn                 ? "aws sts get-caller-identity"
                                                        : "aws configure";
    return command + (" --profile " + shellWord(name));
}

std::optional<std::string> Profile::signInKey() const {
    if (signIn() != SignIn::sso) return std::nullopt;
    if (auto named = setting("sso_session")) return named;
    return setting("sso_start_url");
}

Profiles::Profiles(std::string_view config, std::string_view credentials) {
    std::map<std::string, Settings> sessions;
    for (const auto& [kind, name, settings] : parseINI(config)) {
        if (kind == "sso-session") sessions[name] = settings;
        const bool isProfile = kind == "profile" || (kind.empty() && name == "default");
        if (isProfile) named(name).settings.insert(settings.begin(), settings.end());
    }
    for (const auto& [kind, name, settings] : parseINI(credentials)) {
        auto& known = named(kind.empty() ? name : kind + ' ' + name).settings;
        for (const auto& [key, value] : settings) known.insert_or_assign(key, value);
    }
    for (auto& profile : profiles_)
        if (const auto session = profile.setting("sso_session"))
            profile.session = sessions[*session];
}

const Profile* Profiles::find(std::string_view name) const {
    const auto found = std::ranges::find(profiles_, name, &Profile::name);
    return found == profiles_.end() ? nullptr : &*found;
}

Profile& Profiles::named(const std::string& name) {
    const auto found = std::ranges::find(profiles_, name, &Profile::name);
    return found == profiles_.end() ? profiles_.emplace_back(Profile{.name = name}) : *found;
}

}  // namespace tessary::aws
