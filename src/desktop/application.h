// The program: one desktop for a session, and calls that tell it what to do.
#pragma once

#include <string>
#include <vector>

namespace tessary::desktop {

/// Runs a call of the program, whose words those are after its name, and returns its exit status: 0
/// done, 1 could not, 2 a wrong call. Where a desktop runs already, it does the work; else a call
/// for a command works on the widgets' file, and one without starts the desktop and returns when
/// that ends.
int run(const std::vector<std::string>& words);

}  // namespace tessary::desktop
