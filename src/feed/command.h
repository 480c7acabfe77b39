// The feed's command line.
//
//     parseCall({"--once"}).value().mode               // Mode::once
//     parseCall({"status", "--json"}).value().json     // true
//     parseCall({"stat"}).fault().message()            // names the word at fault, and what is known
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "platform/foundation/result.h"

namespace tessary::feed {

struct Command {
    enum class Mode { run, once, dryRun, status, information };
    using Path = std::optional<std::filesystem::path>;

    Mode mode{};
    bool json{};
    Path container{};
    Path info{};
    Path settings{};
    std::string information{};  ///< what is to be printed, help or the version
};

/// Without a command the feed runs.
foundation::Result<Command> parseCall(std::vector<std::string> words);

}  // namespace tessary::feed
