#include "feed/aws/trouble.h"

#include <algorithm>
#include <array>
#include <optional>

#include "platform/foundation/visible_text.h"

namespace tessary::aws {

/// The body of a refusal.
struct RefusalBody {
    std::optional<std::string> type{}, code{}, message{}, messageInCapitals{};
};

}  // namespace tessary::aws

template <>
inline constexpr auto tessary::foundation::fieldsOf<tessary::aws::RefusalBody> = std::tuple{
    Field{"__type", &tessary::aws::RefusalBody::type},
    Field{"Code", &tessary::aws::RefusalBody::code},
    Field{"message", &tessary::aws::RefusalBody::message},
    Field{"Message", &tessary::aws::RefusalBody::messageInCapitals},
};

namespace tessary::aws {

namespace {

constexpr std::size_t longestWords = 200;  // cells

using Kind = Trouble::Kind;

struct Meaning {
    std::string_view type{};
    Kind kind{};
};

/// By the name without "Exception", which either protocol may add.
constexpr std::array meanings{
    Meaning{"ExpiredToken", Kind::tokenExpired},
    Meaning{"UnrecognizedClient", Kind::unknownKeys},
    Meaning{"InvalidClientTokenId", Kind::unknownKeys},
    Meaning{"OptInRequired", Kind::unknownKeys},
    Meaning{"AccessDenied", Kind::mayNot},
    Meaning{"RequestExpired", Kind::wrongClock},
    Meaning{"Throttling", Kind::passing},
    Meaning{"Throttled", Kind::passing},
    Meaning{"RequestThrottled", Kind::passing},
    Meaning{"TooManyRequests", Kind::passing},
    Meaning{"RequestLimitExceeded", Kind::passing},
    Meaning{"SlowDown", Kind::passing},
    Meaning{"InternalFailure", Kind::passing},
    Meaning{"InternalServiceFault", Kind::passing},
};

std::string_view withoutEnding(std::string_view type) {
    constexpr std::string_view ending = "Exception";
    if (type.ends_with(ending)) type.remove_suffix(ending.size());
    return type;
}

/// A wrong signature is the clock's fault where the answer speaks of time, else the keys'.
Kind ofSignature(std::string_view message) {
    const auto says = [&](std::string_view words) { return message.find(words) != message.npos; };
    const bool isOfTime = says("Signature expired") || says("not yet current");
    return isOfTime ? Kind::wrongClock : Kind::unknownKeys;
}

Kind kindOf(const Refusal& refusal) {
    const auto type = withoutEnding(refusal.type);
    if (type == "SignatureDoesNotMatch" || type == "InvalidSignature")
        return ofSignature(refusal.message);
    const auto known = std::ranges::find(meanings, type, &Meaning::type);
    if (known != meanings.end()) return known->kind;
    constexpr int tooMany = 429;
    const bool mayPass = refusal.status == 0 || refusal.status == tooMany || refusal.status >= 500;
    return mayPass ? Kind::passing : Kind::lasting;
}

}  // namespace

Refusal refusalOf(int status, std::string_view body) {
    Refusal refusal{.status = status};
    const auto said = foundation::decodeJSON<RefusalBody>(body, {.depth = 16});
    if (!said) return refusal;
    refusal.type = said->type.value_or(said->code.value_or(""));
    refusal.type.erase(0, refusal.type.rfind('#') + 1);
    refusal.message = said->message.value_or(said->messageInCapitals.value_or(""));
    return refusal;
}

Trouble troubleOf(const Refusal& refusal) {
    std::string words =
        refusal.type.empty() ? "HTTP " + std::to_string(refusal.status) : refusal.type;
    if (!refusal.message.empty()) words += ": " + refusal.message;
    const Kind kind = kindOf(refusal);
    if (kind == Kind::wrongClock) words = "This machine's clock is wrong: " + words;
    return {kind, foundation::visible(words, longestWords)};
}

std::string toldOf(const Trouble& trouble, const std::string& action, const std::string& region) {
    if (trouble.kind == Kind::mayNot) return "No right to ask for cloudwatch:" + action;
    if (trouble.kind != Kind::unknownKeys) return trouble.words;
    return region + ": not enabled for this account, or a token of the global STS endpoint";
}

}  // namespace tessary::aws
