// Where CloudWatch and its console are, by region.
//
//     cloudWatchURL("eu-west-1", false)      // "https://monitoring.eu-west-1.amazonaws.com"
//     consoleHost("us-gov-west-1")           // "us-gov-west-1.console.amazonaws-us-gov.com"
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tessary::aws {

/// Small letters, digits and hyphens, and some of them: what may become a part of a host's name.
bool isRegion(std::string_view word);

/// For a region; with `fips`, of the service that is certified for the United States' government.
std::string cloudWatchURL(std::string_view region, bool fips);

/// Of the console's page for a region; none for the isolated regions.
std::optional<std::string> consoleHost(std::string_view region);

}  // namespace tessary::aws
