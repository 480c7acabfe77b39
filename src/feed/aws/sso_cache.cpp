#include "feed/aws/sso_cache.h"

#include <array>
#include <cmath>
#include <openssl/evp.h>

#include "platform/foundation/date.h"
#include "platform/foundation/json_decoding.h"

namespace tessary::aws {

/// A file of the cache, as far as it is of interest.
struct CachedSignIn {
    std::string expiresAt{};
    std::optional<std::string> refreshToken{};
};

}  // namespace tessary::aws

template <>
inline constexpr auto tessary::foundation::fieldsOf<tessary::aws::CachedSignIn> = std::tuple{
    Field{"expiresAt", &tessary::aws::CachedSignIn::expiresAt},
    Field{"refreshToken", &tessary::aws::CachedSignIn::refreshToken},
};

namespace tessary::aws {

std::optional<std::int64_t> toolTimeMs(std::string_view text) {
    constexpr std::string_view zone = "UTC";
    const bool isNamed = text.ends_with(zone);
    const std::string time{text.substr(0, text.size() - (isNamed ? zone.size() : 0))};
    const auto date = foundation::Date::parse(isNamed ? time + 'Z' : time);
    constexpr double farthest = 1e11;  // seconds; no sum of milliseconds overflows
    if (!date || std::abs(date->seconds) > farthest) return std::nullopt;
    return std::llround(date->seconds * 1000);
}

std::string ssoCacheFile(std::string_view key) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::array<unsigned char, EVP_MAX_MD_SIZE> digest{};
    std::size_t size = 0;
    ::EVP_Q_digest(nullptr, "SHA1", nullptr, key.data(), key.size(), digest.data(), &size);
    std::string name;
    for (std::size_t i = 0; i < size; ++i)
        (name += digits[digest[i] >> 4U]) += digits[digest[i] & 15U];
    return name + ".json";
}

std::optional<SignInState> readSignInState(std::string_view text) {
    const auto cached = foundation::decodeJSON<CachedSignIn>(text, {.depth = 16});
    if (!cached) return std::nullopt;
    const auto endsMs = toolTimeMs(cached->expiresAt);
    if (!endsMs) return std::nullopt;
    return SignInState{.endsMs = *endsMs, .canRenew = !cached->refreshToken.value_or("").empty()};
}

}  // namespace tessary::aws
