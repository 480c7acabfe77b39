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
#include "feed/rounds/search.h"
#include "feed/settings/settings.h"
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
struct WatchCall {
    std::string profile{};  ///< may be empty
    std::vector<std::string> regions{};
    bool enable{};
    Given given{};
};
struct UnwatchCall {
    std::string profile{};
    std::vector<std::string> regions{};
    Given given{};
};
/// A place has empty words where all will do.
struct AlarmsCall {
    std::string text{};
    rounds::Place where{};
    bool json{};
    Given given{};
};
struct MetricsCall {
    std::optional<std::string> namespace_{};
    std::optional<std::string> name{};
    rounds::Place where{};
    bool json{};
    Given given{};
};
struct PinCall {
    /// What is not said of it is empty.
    std::variant<settings::AlarmPin, settings::MetricPin> pin{};
    bool json{};
    Given given{};
};
struct UnpinCall {
    std::string id{};
    Given given{};
};
using Call = std::variant<Information, RoundsCall, StatusCall, WatchCall, UnwatchCall, AlarmsCall,
                          MetricsCall, PinCall, UnpinCall, OpenCall>;

/// Without a command the feed runs.
foundation::Result<Call> parseCall(std::vector<std::string> words);

}  // namespace tessary::feed
