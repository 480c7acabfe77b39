// The command `open`: the console's page of a widget's link, in the user's browser.
//
//     openLink("tessary://alarms")      // 0, once xdg-open has taken the page
#pragma once

#include <string>

namespace tessary::feed {

/// The program's exit status: that of xdg-open; 1 where there is no such page or nothing to show it
/// with, 2 for what is no link of a widget and for settings that are wrong.
int openLink(const std::string& url);

}  // namespace tessary::feed
