#include "feed/service.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <sstream>
#include <unistd.h>

#include "feed/notes.h"
#include "platform/foundation/joined.h"
#include "platform/foundation/visible_text.h"
#include "platform/system/child.h"

namespace tessary::feed {

namespace fs = std::filesystem;
using Lines = std::vector<std::string>;

namespace {

constexpr std::array<std::string_view, 10> others{
    "HTTPS_PROXY", "https_proxy", "HTTP_PROXY",      "http_proxy",     "ALL_PROXY",
    "all_proxy",   "NO_PROXY",    "XDG_CONFIG_HOME", "XDG_STATE_HOME", "XDG_DATA_HOME"};

/// What the feed sets by itself where it matters does not.
bool matters(std::string_view name) {
    constexpr std::array<std::string_view, 3> own{"AWS_PAGER", "AWS_MAX_ATTEMPTS",
                                                  "AWS_CLI_AUTO_PROMPT"};
    if (name.starts_with("AWS_")) return std::ranges::find(own, name) == own.end();
    return std::ranges::find(others, name) != others.end();
}

Lines splitLines(std::string_view text) {
    Lines lines;
    std::istringstream in{std::string{text}};
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    return lines;
}

Lines shellVariables() {
    Lines variables;
    for (char** at = ::environ; *at != nullptr; ++at) variables.emplace_back(*at);
    return variables;
}

/// The `aws` that a search path leads to; none where it leads to none.
std::string awsIn(const Lines& variables) {
    std::string path = "/usr/local/bin:/usr/bin:/bin";
    for (const auto& variable : variables)
        if (variable.starts_with("PATH=")) path = variable.substr(5);
    std::istringstream folders{path};
    for (std::string folder; std::getline(folders, folder, ':');)
        if (const auto file = fs::path{folder} / "aws"; ::access(file.c_str(), X_OK) == 0)
            return file;
    return "";
}

/// Of systemctl for the user; keys are none of its business.
foundation::Result<system::Ended, system::ChildFault> systemctl(Lines words) {
    words.insert(words.begin(), {"systemctl", "--user"});
    return system::runChild(
        {.words = std::move(words),
         .without = {"AWS_*KEY*", "AWS_*TOKEN*", "NOTIFY_SOCKET", "WATCHDOG_*"}});
}

void tellUnseen(std::string_view service) {
    auto missing = unseen(shellVariables(), service);
    const auto aws = awsIn(shellVariables());
    if (!aws.empty() && awsIn(splitLines(service)).empty()) missing.push_back("the path of " + aws);
    if (missing.empty()) return;
    printed("It does not see what this shell has: " +
            foundation::visible(foundation::joined(missing, ", "), 2000) +
            "\nWhat it needs belongs into ~/.config/environment.d/aws.conf, which counts from the "
            "next log-in;\nkeys belong into a profile: aws configure --profile PROFILE\n");
}

}  // namespace

Lines unseen(const Lines& shell, std::string_view service) {
    const auto seen = splitLines(service);
    Lines names;
    for (const auto& variable : shell) {
        const auto name = variable.substr(0, variable.find('='));
        const bool isSet = variable.size() > name.size() + 1;
        if (isSet && matters(name) && std::ranges::find(seen, variable) == seen.end())
            names.push_back(name);
    }
    std::ranges::sort(names);
    return names;
}

bool enableService() {
    const auto started = systemctl({"enable", "--now", "tessary-widgets-feed.service"});
    if (started && started->status == 0 && started->signal == 0) {
        printed("The service runs, and starts at each log-in\n");
        const auto shown = systemctl({"show-environment"});
        tellUnseen(shown && shown->status == 0 ? shown->output : "");
        return true;
    }
    const auto why = splitLines(started ? started->errors : started.fault().message());
    complain("the service cannot be started: " +
             foundation::visible(foundation::joined(why, "; ")));
    complain("let the session start the feed instead, and now: tessary-widgets-feed &");
    return false;
}

}  // namespace tessary::feed
