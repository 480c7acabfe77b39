// The machine's time zone, as its file names it.
//
//     machineZone()         // "Europe/Berlin"
#pragma once

#include <optional>
#include <string>

namespace tessary::signs {

/// The file that says it, often a link into the database of zones.
inline constexpr const char* zoneFile = "/etc/localtime";

/// The name in the database that the file links to. None where it is no such link, and where TZ
/// names another zone for this process and those that it starts.
std::optional<std::string> machineZone();

}  // namespace tessary::signs
