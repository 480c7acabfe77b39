// CloudWatch's alarms, as DescribeAlarms tells of them.
//
//     decodeJSON<AlarmsPage>(body).value().metricAlarms.value().front().name
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "feed/aws/metric.h"
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

    // What it watches: a metric, or one of a list of queries; a composite alarm has neither.
    std::optional<std::string> namespace_{};
    std::optional<std::string> metricName{};
    std::optional<std::vector<Dimension>> dimensions{};
    std::optional<std::string> statistic{};
    std::optional<std::string> extendedStatistic{};  ///< instead: "p99", "tm95"
    std::optional<std::int64_t> period{};            ///< seconds
    std::optional<std::string> unit{};
    std::optional<std::vector<MetricQuery>> metrics{};
    Figure threshold{};
    std::optional<std::string> band{};  ///< instead: the query that is an anomaly detector's
    std::optional<std::string> comparison{};

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
    Field{"Namespace", &aws::DescribedAlarm::namespace_},
    Field{"MetricName", &aws::DescribedAlarm::metricName},
    Field{"Dimensions", &aws::DescribedAlarm::dimensions},
    Field{"Statistic", &aws::DescribedAlarm::statistic},
    Field{"ExtendedStatistic", &aws::DescribedAlarm::extendedStatistic},
    Field{"Period", &aws::DescribedAlarm::period},
    Field{"Unit", &aws::DescribedAlarm::unit},
    Field{"Metrics", &aws::DescribedAlarm::metrics},
    Field{"Threshold", &aws::DescribedAlarm::threshold},
    Field{"ThresholdMetricId", &aws::DescribedAlarm::band},
    Field{"ComparisonOperator", &aws::DescribedAlarm::comparison},
};

template <>
inline constexpr auto fieldsOf<aws::AlarmsPage> = std::tuple{
    Field{"MetricAlarms", &aws::AlarmsPage::metricAlarms},
    Field{"CompositeAlarms", &aws::AlarmsPage::compositeAlarms},
    Field{"NextToken", &aws::AlarmsPage::next},
};

}  // namespace tessary::foundation
