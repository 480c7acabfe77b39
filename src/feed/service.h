// The user's service, which runs the feed from one log-in to the next.
//
//     enableService()                                    // "The service runs, and starts at each log-in"
//     unseen({"AWS_PROFILE=prod", "EDITOR=vi"}, "LANG=C\n")      // {"AWS_PROFILE"}
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tessary::feed {

/// Starts it, now and from then on, and says what of this shell's environment it does not see;
/// where that cannot be done, what to do instead.
bool enableService();

/// The names of this shell's variables that matter to the feed, and that the service has not, or
/// has otherwise. Both as "NAME=VALUE"; the service's one a line.
std::vector<std::string> unseen(const std::vector<std::string>& shell, std::string_view service);

}  // namespace tessary::feed
