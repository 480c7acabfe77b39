// The profiles of the AWS tools' two files, and how each signs in.
//
//     const Profiles profiles{config, credentials};       // the texts of ~/.aws/config and ~/.aws/credentials
//     profiles.find("prod")->signIn()                     // SignIn::keys
//     profiles.find("prod")->setting("region")            // "eu-west-1"
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "feed/aws/ini.h"
#include "platform/foundation/named_cases.h"

namespace tessary::aws {

/// What gives a profile its keys.
enum class SignIn {
    keys,     ///< they stand in a file
    process,  ///< a program prints them
    sso,      ///< a sign-in with a browser, which expires
    tool,     ///< anything else: the AWS command line knows
};

/// A profile as both files together describe it.
struct Profile {
    std::string name{};
    Settings settings{};
    Settings session{};  ///< of the sso-session that it names

    /// A setting that is there and not empty.
    std::optional<std::string> setting(const std::string& key) const;
    /// Roles and sign-ins come before keys that stand beside them.
    SignIn signIn() const;
    /// What a person types to sign in anew: "aws sso login --profile prod". A role and a program
    /// ask for what they want, or say what is wrong, when they are used on a terminal.
    std::string remedy() const;
    /// What the file of a browser's sign-in is named after: the session, or the start page.
    std::optional<std::string> signInKey() const;
};

class Profiles {
public:
    /// Texts of files that are not there are empty. Where both have a setting, the credentials'
    /// counts.
    Profiles(std::string_view config, std::string_view credentials);

    const std::vector<Profile>& all() const { return profiles_; }
    const Profile* find(std::string_view name) const;

private:
    Profile& named(const std::string& name);

    std::vector<Profile> profiles_{};
};

}  // namespace tessary::aws

template <>
inline constexpr auto tessary::foundation::namesOf<tessary::aws::SignIn> =
    tessary::foundation::NamedCases<tessary::aws::SignIn, 4>{{
        {tessary::aws::SignIn::keys, "keys"},
        {tessary::aws::SignIn::process, "process"},
        {tessary::aws::SignIn::sso, "sso"},
        {tessary::aws::SignIn::tool, "tool"},
    }};
