#include "feed/aws/endpoint.h"

#include <algorithm>
#include <array>

namespace tessary::aws {

namespace {

/// A group of regions that share a domain, by how their names begin.
struct Partition {
    std::string_view prefix{};
    std::string_view domain{};
    std::string_view console{};  ///< empty where it is not publicly known
};

constexpr std::array partitions{
    Partition{"cn-", "amazonaws.com.cn", "console.amazonaws.cn"},
    Partition{"us-gov-", "amazonaws.com", "console.amazonaws-us-gov.com"},
    Partition{"us-isob-", "sc2s.sgov.gov"},
    Partition{"us-isof-", "csp.hci.ic.gov"},
    Partition{"us-iso-", "c2s.ic.gov"},
    Partition{"eu-isoe-", "cloud.adc-e.uk"},
    Partition{"eusc-", "amazonaws.eu"},
    Partition{"", "amazonaws.com", "console.aws.amazon.com"},
};

const Partition& partitionOf(std::string_view region) {
    return *std::ranges::find_if(
        partitions, [&](const Partition& each) { return region.starts_with(each.prefix); });
}

}  // namespace

bool isRegion(std::string_view word) {
    return !word.empty() && word.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789-") ==
                                std::string_view::npos;
}

std::string cloudWatchURL(std::string_view region, bool fips) {
    std::string url = fips ? "https://monitoring-fips." : "https://monitoring.";
    return url.append(region).append(".").append(partitionOf(region).domain);
}

std::optional<std::string> consoleHost(std::string_view region) {
    const auto domain = partitionOf(region).console;
    if (domain.empty()) return std::nullopt;
    return std::string{region}.append(".").append(domain);
}

}  // namespace tessary::aws
