// The feed's command line.
//
//     std::get<RoundsCall>(parseCall({"--once"}).value()).mode      // Mode::once
//     std::get<StatusCall>(parseCall({"status", "--json"}).value()).json      // true
//     parseCall({"stat"}).fault().message()      // names the word at fault, and what is known
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "feed/aws/client.h"
#include "platform/foundation/result.h"

namespace tessary::feed {

/// Where things lie, as far as the call says.
struct Given {
    using Path = std::optional<std::filesystem::path>;
    Path container{};
    Path info{};
    Path settings{};
};

/// Help or the version.
struct Information {
    std::string text{};
};
struct RoundsCall {
    enum class Mode { endless, once, dryRun };
    Mode mode{};
    Given given{};
    aws::Patience patience{};
};
struct StatusCall {
    bool json{};
};
struct OpenCall {
    std::string url{};
};
using Call = std::variant<Information, RoundsCall, StatusCall, OpenCall>;

/// Without a command the feed runs.
foundation::Result<Call> parseCall(std::vector<std::string> words);

}  // namespace tessary::feed
