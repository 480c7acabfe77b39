// Where the programs are that are installed together with this one.
//
//     programOfOurs("tessary-widgets")     // "/usr/bin/tessary-widgets", as this is /usr/bin/...
#pragma once

#include <string>

namespace tessary::client {

/// The program of that name beside this one; where there is none, the name itself, for the PATH.
std::string programOfOurs(const std::string& name);

}  // namespace tessary::client
