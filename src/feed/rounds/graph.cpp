#include "feed/rounds/graph.h"

#include <algorithm>
#include <utility>

#include "feed/aws/statistics.h"
#include "platform/foundation/json_writing.h"

namespace tessary::rounds {

namespace {

bool falls(const std::string& statistic) {
    return statistic == "Sum" || statistic == "SampleCount";
}

bool isUsable(const aws::MetricQuery& query) {
    return query.expression || (query.stat && query.stat->period > 0);
}

Graph graphOf(aws::MetricStat stat) { return Graph{{{.id = "shown", .stat = std::move(stat)}}, 0}; }

std::optional<Graph> graphOf(std::vector<aws::MetricQuery> queries,
                             const std::optional<std::string>& band) {
    if (band) std::erase_if(queries, [&](const auto& query) { return query.id == *band; });
    const auto isShown = [](const auto& query) { return query.isReturned.value_or(true); };
    const auto shown = std::ranges::find_if(queries, isShown);
    if (shown == queries.end() || !isUsable(*shown)) return std::nullopt;
    const auto place = static_cast<std::size_t>(shown - queries.begin());
    return Graph{std::move(queries), place};
}

}  // namespace

Graph::Graph(std::vector<aws::MetricQuery> queries, std::size_t shown)
    : queries_(std::move(queries)), shown_(shown) {
    for (std::size_t i = 0; i < queries_.size(); ++i) queries_[i].isReturned = i == shown_;
}

std::int64_t Graph::period() const {
    std::int64_t longest = shown().period.value_or(0);
    if (shown().stat) longest = shown().stat->period;
    if (longest > 0) return longest;
    for (const auto& query : queries_)
        longest =
            std::max({longest, query.period.value_or(0), query.stat ? query.stat->period : 0});
    constexpr std::int64_t usual = 300;
    return longest > 0 ? longest : usual;
}

Series Graph::series() const {
    if (shown().stat) return {period(), shown().stat->statistic};
    const auto isFalling = [](const auto& query) {
        return query.stat && falls(query.stat->statistic);
    };
    return {period(), std::ranges::any_of(queries_, isFalling) ? "Sum" : ""};
}

std::optional<std::string> Graph::metricName() const {
    return shown().stat ? shown().stat->metric.name : std::nullopt;
}

std::optional<std::string> Graph::unit() const {
    const auto unit = shown().stat ? shown().stat->unit : std::nullopt;
    return unit == "None" ? std::nullopt : unit;
}

bool Graph::isFree() const {
    const auto& [id, stat, expression, isReturned, period, account] = shown();
    return stat && !account && aws::toldByStatistics(stat->statistic);
}

Question Graph::question(std::int64_t now, const std::optional<std::string>& next) const {
    const auto [start, end] = windowAt(now, series());
    if (isFree())
        return {.action = "GetMetricStatistics",
                .body = foundation::toJSON(aws::statisticsQuery(*shown().stat, start, end))};
    return {.action = "GetMetricData",
            .body = foundation::toJSON(
                aws::DataQuery{.queries = queries_, .start = start, .end = end, .next = next})};
}

std::optional<Graph> graphOf(const aws::DescribedAlarm& alarm) {
    if (alarm.metrics && !alarm.metrics->empty()) return graphOf(*alarm.metrics, alarm.band);
    const auto& statistic = alarm.statistic ? alarm.statistic : alarm.extendedStatistic;
    if (!alarm.metricName || !statistic || alarm.period.value_or(0) <= 0) return std::nullopt;
    return graphOf(aws::MetricStat{{alarm.namespace_, alarm.metricName, alarm.dimensions},
                                   *alarm.period,
                                   *statistic,
                                   alarm.unit});
}

Graph graphOf(const settings::MetricPin& pin) {
    std::vector<aws::Dimension> dimensions;
    for (const auto& [name, value] : pin.dimensions) dimensions.push_back({name, value});
    return graphOf(
        aws::MetricStat{{pin.namespace_, pin.name, dimensions}, pin.period, pin.statistic, {}});
}

}  // namespace tessary::rounds
