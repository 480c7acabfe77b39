// CloudWatch's alarms, as DescribeAlarms tells of them.
//
//     decodeJSON<AlarmsPage>(body).value().metricAlarms.value().front().name
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/foundation/json_decoding.h"

namespace tessary::aws {

/// What is asked for: a page of those in a state, or of those of some names.
struct AlarmsQuery {
    std::vector<std::string> types{"MetricAlarm", "CompositeAlarm"};
    std::int64_t most{100};  ///< the most that a page may hold
    std::optional<std::vector<std::string>> names{};
    std::optional<std::string> state{};
    std::optional<std::string> next{};  ///< as the page before said
};

/// Any alarm. Times are seconds since 1970.
struct DescribedAlarm {
    std::string name{};
    std::string state{};  ///< "OK", "ALARM", "INSUFFICIENT_DATA"
    std::string reason{};
    std::optional<double> stateUpdated{};       ///< also moves where the state stays
    std::optional<double> stateTransitioned{};  ///< a service may not tell it

    /// Since when the state holds, in milliseconds, as far as it is told.
    std::optional<std::int64_t> since() const;
    bool operator==(const DescribedAlarm&) const = default;
};

struct AlarmsPage {
    std::optional<std::vector<DescribedAlarm>> metricAlarms{};
    std::optional<std::vector<DescribedAlarm>> compositeAlarms{};
    std::optional<std::string> next{};  ///< there is another page
};

}  // namespace tessary::aws

namespace tessary::foundation {

template <>
inline constexpr auto fieldsOf<aws::AlarmsQuery> = std::tuple{
    Field{"AlarmTypes", &aws::AlarmsQuery::types},
    Field{"MaxRecords", &aws::AlarmsQuery::most},
    Field{"AlarmNames", &aws::AlarmsQuery::names, Key::ifPresent},
    Field{"StateValue", &aws::AlarmsQuery::state, Key::ifPresent},
    Field{"NextToken", &aws::AlarmsQuery::next, Key::ifPresent},
};

template <>
inline constexpr auto fieldsOf<aws::DescribedAlarm> = std::tuple{
    Field{"AlarmName", &aws::DescribedAlarm::name},
    Field{"StateValue", &aws::DescribedAlarm::state},
    Field{"StateReason", &aws::DescribedAlarm::reason},
    Field{"StateUpdatedTimestamp", &aws::DescribedAlarm::stateUpdated},
    Field{"StateTransitionedTimestamp", &aws::DescribedAlarm::stateTransitioned},
};

template <>
inline constexpr auto fieldsOf<aws::AlarmsPage> = std::tuple{
    Field{"MetricAlarms", &aws::AlarmsPage::metricAlarms},
    Field{"CompositeAlarms", &aws::AlarmsPage::compositeAlarms},
    Field{"NextToken", &aws::AlarmsPage::next},
};

}  // namespace tessary::foundation
