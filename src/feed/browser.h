// A page in the user's browser.
//
//     showPage("https://us-east-1.console.aws.amazon.com/cloudwatch/home")      // 0
#pragma once

#include <string>

namespace tessary::feed {

/// Has xdg-open open the URL, without a shell, and waits for it. Its exit status; 1 where it cannot
/// be started, or was ended by a signal. What went wrong is said, and the URL with it.
int showPage(const std::string& url);

}  // namespace tessary::feed
