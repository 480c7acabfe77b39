// The samples of a metric, as GetMetricStatistics and GetMetricData tell them.
//
//     toldByStatistics("p99.9")                             // true; of "tm90" GetMetricData knows
//     samplesOf(decodeJSON<StatisticsAnswer>(body).value(), "Average").points
//         // {{1731772500000, 12.5}, {1731772800000, 13}}: oldest first, finite, of one unit
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "feed/aws/metric.h"
#include "platform/foundation/json_decoding.h"
#include "snapshot/pins_snapshot.h"

namespace tessary::aws {

/// What GetMetricStatistics is asked. Times are seconds since 1970, the end is not in it.
struct StatisticsQuery {
    std::string namespace_{};
    std::string name{};
    std::vector<Dimension> dimensions{};
    std::int64_t start{};
    std::int64_t end{};
    std::int64_t period{};
    std::optional<std::vector<std::string>> statistics{};   ///< "Average"
    std::optional<std::vector<std::string>> percentiles{};  ///< "p99"
    std::optional<std::string> unit{};
};

struct Datapoint {
    double seconds{};
    Figure count{}, average{}, sum{}, minimum{}, maximum{};
    std::optional<std::map<std::string, Figure>> percentiles{};
    std::optional<std::string> unit{};
};
struct StatisticsAnswer {
    std::optional<std::vector<Datapoint>> points{};  ///< in no order
};

/// What GetMetricData is asked.
struct DataQuery {
    std::vector<MetricQuery> queries{};
    std::int64_t start{};
    std::int64_t end{};
    std::optional<std::string> next{};  ///< as the answer before said
};

/// A part of a series, or all of it.
struct DataResult {
    std::optional<std::string> id{};  ///< of the query
    /// "Complete", "PartialData", "InternalError", "Forbidden"
    std::optional<std::string> status{};
    std::optional<std::vector<double>> seconds{};
    std::optional<std::vector<Figure>> values{};  ///< as many
};
struct DataAnswer {
    std::optional<std::vector<DataResult>> results{};
    std::optional<std::string> next{};  ///< there is more
};

/// Whether GetMetricStatistics knows the statistic: a plain one, or a percentile from p0 to p100
/// with two decimals at most. It costs nothing and tells the unit.
bool toldByStatistics(std::string_view statistic);

/// A series: strictly ascending in time, each value finite.
struct Samples {
    std::vector<snapshot::SnapshotPoint> points{};
    std::optional<std::string> unit{};  ///< the points' own; "None" is none
    bool operator==(const Samples&) const = default;
};

/// Of the statistic that was asked for. A metric may have samples of several units: the newest
/// sample's are taken, since no line joins them.
Samples samplesOf(const StatisticsAnswer& answer, std::string_view statistic);

/// Of a query, from all parts of its answer.
Samples samplesOf(const std::vector<DataResult>& results, std::string_view id);

/// What is to be asked for a statistic of a metric.
StatisticsQuery statisticsQuery(const MetricStat& stat, std::int64_t start, std::int64_t end);

}  // namespace tessary::aws

namespace tessary::foundation {

template <>
inline constexpr auto fieldsOf<aws::StatisticsQuery> = std::tuple{
    Field{"Namespace", &aws::StatisticsQuery::namespace_},
    Field{"MetricName", &aws::StatisticsQuery::name},
    Field{"Dimensions", &aws::StatisticsQuery::dimensions},
    Field{"StartTime", &aws::StatisticsQuery::start},
    Field{"EndTime", &aws::StatisticsQuery::end},
    Field{"Period", &aws::StatisticsQuery::period},
    Field{"Statistics", &aws::StatisticsQuery::statistics, Key::ifPresent},
    Field{"ExtendedStatistics", &aws::StatisticsQuery::percentiles, Key::ifPresent},
    Field{"Unit", &aws::StatisticsQuery::unit, Key::ifPresent},
};

template <>
inline constexpr auto fieldsOf<aws::Datapoint> = std::tuple{
    Field{"Timestamp", &aws::Datapoint::seconds},
    Field{"SampleCount", &aws::Datapoint::count},
    Field{"Average", &aws::Datapoint::average},
    Field{"Sum", &aws::Datapoint::sum},
    Field{"Minimum", &aws::Datapoint::minimum},
    Field{"Maximum", &aws::Datapoint::maximum},
    Field{"ExtendedStatistics", &aws::Datapoint::percentiles},
    Field{"Unit", &aws::Datapoint::unit},
};

template <>
inline constexpr auto fieldsOf<aws::StatisticsAnswer> = std::tuple{
    Field{"Datapoints", &aws::StatisticsAnswer::points},
};

template <>
inline constexpr auto fieldsOf<aws::DataQuery> = std::tuple{
    Field{"MetricDataQueries", &aws::DataQuery::queries},
    Field{"StartTime", &aws::DataQuery::start},
    Field{"EndTime", &aws::DataQuery::end},
    Field{"NextToken", &aws::DataQuery::next, Key::ifPresent},
};

template <>
inline constexpr auto fieldsOf<aws::DataResult> = std::tuple{
    Field{"Id", &aws::DataResult::id},
    Field{"StatusCode", &aws::DataResult::status},
    Field{"Timestamps", &aws::DataResult::seconds},
    Field{"Values", &aws::DataResult::values},
};

template <>
inline constexpr auto fieldsOf<aws::DataAnswer> = std::tuple{
    Field{"MetricDataResults", &aws::DataAnswer::results},
    Field{"NextToken", &aws::DataAnswer::next},
};

}  // namespace tessary::foundation
