// What a search brought, as the commands list it: the alarms and metrics that could be pinned.
//
//     const auto listing = listed(findings, settings, "cpu");       // alarms whose names hold it
//     listing.alarms[0].id          // "prod/us-east-1/orders-db-cpu-high", or that of its pin
//     listing.faults                // {"prod · eu-west-1: Could not connect"}
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "feed/rounds/alarms_round.h"
#include "feed/rounds/search.h"
#include "feed/settings/settings.h"

namespace tessary::rounds {

struct ListedAlarm {
    std::string profile{};
    std::string region{};
    std::string name{};
    std::string state{};
    std::string id{};  ///< of its pin, or that one would get
    bool pinned{};
    bool operator==(const ListedAlarm&) const = default;
};

struct ListedMetric {
    std::string profile{};
    std::string region{};
    std::string namespace_{};
    std::string name{};
    std::map<std::string, std::string> dimensions{};
    std::string id{};
    bool pinned{};
    bool operator==(const ListedMetric&) const = default;
};

struct AlarmListing {
    std::vector<ListedAlarm> alarms{};
    std::vector<std::string> faults{};  ///< a line for each place that could not be asked
    bool more{};                        ///< there may be others that were not looked at
};

struct MetricListing {
    std::vector<ListedMetric> metrics{};
    std::vector<std::string> faults{};
    bool more{};
};

/// By places, in their order, and by name. Alarms whose names hold the text, in either case.
AlarmListing listed(const std::vector<Finding<aws::DescribedAlarm>>& findings,
                    const settings::Settings& settings, std::string_view text);
MetricListing listed(const std::vector<Finding<aws::Metric>>& findings,
                     const settings::Settings& settings);

std::map<std::string, std::string> dimensionsOf(const aws::Metric& metric);

/// How many alarms of a target are in ALARM, without those that are left out.
struct Census {
    std::size_t firing{};
    std::size_t all{};
};
Census census(const Finding<aws::DescribedAlarm>& finding, const Target& target);

/// "prod · us-east-1: Could not connect"; none where nothing is wrong.
template <class Item>
std::vector<std::string> faultsOf(const std::vector<Finding<Item>>& findings);

}  // namespace tessary::rounds

namespace tessary::foundation {

template <>
inline constexpr auto fieldsOf<rounds::ListedAlarm> = std::tuple{
    Field{"profile", &rounds::ListedAlarm::profile}, Field{"region", &rounds::ListedAlarm::region},
    Field{"name", &rounds::ListedAlarm::name},       Field{"state", &rounds::ListedAlarm::state},
    Field{"id", &rounds::ListedAlarm::id},           Field{"pinned", &rounds::ListedAlarm::pinned},
};

template <>
inline constexpr auto fieldsOf<rounds::ListedMetric> = std::tuple{
    Field{"profile", &rounds::ListedMetric::profile},
    Field{"region", &rounds::ListedMetric::region},
    Field{"namespace", &rounds::ListedMetric::namespace_},
    Field{"name", &rounds::ListedMetric::name},
    Field{"dimensions", &rounds::ListedMetric::dimensions},
    Field{"id", &rounds::ListedMetric::id},
    Field{"pinned", &rounds::ListedMetric::pinned},
};

template <>
inline constexpr auto fieldsOf<rounds::AlarmListing> = std::tuple{
    Field{"alarms", &rounds::AlarmListing::alarms},
    Field{"faults", &rounds::AlarmListing::faults},
    Field{"more", &rounds::AlarmListing::more},
};

template <>
inline constexpr auto fieldsOf<rounds::MetricListing> = std::tuple{
    Field{"metrics", &rounds::MetricListing::metrics},
    Field{"faults", &rounds::MetricListing::faults},
    Field{"more", &rounds::MetricListing::more},
};

}  // namespace tessary::foundation
