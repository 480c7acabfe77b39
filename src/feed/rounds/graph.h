// What an alarm or a pin shows a line of, and how CloudWatch is asked for it.
//
//     const auto graph = graphOf(alarm);              // none of a composite alarm
//     graph->question(now).action                      // "GetMetricStatistics"
//
// What GetMetricStatistics knows is asked there, where it costs nothing and points tell their unit:
// a metric's plain statistics and percentiles. GetMetricData is for expressions, for other
// statistics, and for metrics of another account.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "feed/aws/alarms.h"
#include "feed/aws/metric.h"
#include "feed/rounds/window.h"
#include "feed/settings/settings.h"

namespace tessary::rounds {

/// What is asked of a target.
struct Question {
    std::string profile{};
    std::string region{};
    std::string action{};  ///< "GetMetricStatistics"
    std::string body{};    ///< in JSON
    bool operator==(const Question&) const = default;
};

/// A metric, or an expression with the metrics that it is made of.
class Graph {
public:
    Graph(std::vector<aws::MetricQuery> queries, std::size_t shown);

    /// The query that is shown.
    const aws::MetricQuery& shown() const { return queries_[shown_]; }
    /// Seconds; of an expression that does not tell its own, the longest of its metrics.
    std::int64_t period() const;
    /// Its samples; of an expression with a sum in it, as if of that.
    Series series() const;
    std::optional<std::string> metricName() const;
    std::optional<std::string> unit() const;
    bool isFree() const;

    /// Without the target; `now` in seconds since 1970. `next` is what an answer of GetMetricData
    /// said of its further parts.
    Question question(std::int64_t now, const std::optional<std::string>& next = {}) const;

private:
    std::vector<aws::MetricQuery> queries_;
    std::size_t shown_;
};

/// What the alarm watches: its metric, or of its queries the returned one that is not a band.
std::optional<Graph> graphOf(const aws::DescribedAlarm& alarm);
Graph graphOf(const settings::MetricPin& pin);

}  // namespace tessary::rounds
