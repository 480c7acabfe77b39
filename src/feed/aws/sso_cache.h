// What the AWS tools keep of a sign-in with a browser: one file each in ~/.aws/sso/cache.
//
//     ssoCacheFile("corp")                   // "ee0bfd25...json", after the name or the start page
//     readSignInState(R"({"expiresAt": "2024-11-16T16:00:40Z"})")->hasExpired(now)    // true
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tessary::aws {

/// Milliseconds since 1970 of a time as the AWS tools write it; some of them put "UTC" for its "Z".
std::optional<std::int64_t> toolTimeMs(std::string_view text);

struct SignInState {
    std::int64_t endsMs{};
    bool canRenew{};  ///< without a person, by a token for that

    bool hasExpired(std::int64_t nowMs) const { return endsMs <= nowMs && !canRenew; }
    bool operator==(const SignInState&) const = default;
};

/// The name of the file of a session, or of a start page.
std::string ssoCacheFile(std::string_view key);

/// None for a text that does not tell, as that of a file that is not there.
std::optional<SignInState> readSignInState(std::string_view text);

}  // namespace tessary::aws
