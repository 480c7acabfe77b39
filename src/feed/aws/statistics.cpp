#include "feed/aws/statistics.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace tessary::aws {

namespace {

struct PlainStatistic {
    std::string_view name{};
    Figure Datapoint::*figure{};
};

constexpr std::array plainStatistics{
    PlainStatistic{"SampleCount", &Datapoint::count},
    PlainStatistic{"Average", &Datapoint::average},
    PlainStatistic{"Sum", &Datapoint::sum},
    PlainStatistic{"Minimum", &Datapoint::minimum},
    PlainStatistic{"Maximum", &Datapoint::maximum},
};

const PlainStatistic* plain(std::string_view statistic) {
    const auto known = std::ranges::find(plainStatistics, statistic, &PlainStatistic::name);
    return known == plainStatistics.end() ? nullptr : &*known;
}

bool isNumber(std::string_view text, std::size_t least, std::size_t most) {
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    return text.size() >= least && text.size() <= most && std::ranges::all_of(text, isDigit);
}

bool isPercentile(std::string_view statistic) {
    if (statistic == "p100") return true;
    if (!statistic.starts_with('p')) return false;
    statistic.remove_prefix(1);
    const auto point = std::min(statistic.find('.'), statistic.size());
    const auto decimals = statistic.substr(std::min(point + 1, statistic.size()));
    return isNumber(statistic.substr(0, point), 1, 2) && isNumber(decimals, 0, 2);
}

/// The answer names a percentile as it likes; only one is ever asked for.
Figure figureOf(const Datapoint& point, std::string_view statistic) {
    if (const auto* known = plain(statistic)) return point.*known->figure;
    const bool isTold = point.percentiles && !point.percentiles->empty();
    return isTold ? point.percentiles->begin()->second : Figure{};
}

using Unit = std::optional<std::string>;

struct Sample {
    snapshot::SnapshotPoint point{};
    Unit unit{};
};

/// Samples on their way from an answer, in any order.
class Gathering {
public:
    void add(double seconds, const Figure& figure, const Unit& unit) {
        constexpr double furthest = 9e12;  // seconds; far beyond any calendar, and within 64 bits
        const auto value = finite(figure);
        if (!value || !(std::abs(seconds) < furthest)) return;
        samples_.push_back({{std::llround(seconds * 1000), *value}, unit});
    }

    Samples samples() && {
        const auto time = [](const Sample& sample) { return sample.point.t; };
        std::ranges::stable_sort(samples_, {}, time);
        Samples samples;
        if (samples_.empty()) return samples;
        const Unit unit = samples_.back().unit;
        for (const Sample& sample : samples_) {
            const bool isSecond =
                !samples.points.empty() && samples.points.back().t == time(sample);
            if (sample.unit == unit && !isSecond) samples.points.push_back(sample.point);
        }
        if (unit != "None") samples.unit = unit;
        return samples;
    }

private:
    std::vector<Sample> samples_{};
};

}  // namespace

bool toldByStatistics(std::string_view statistic) {
    return plain(statistic) || isPercentile(statistic);
}

Samples samplesOf(const StatisticsAnswer& answer, std::string_view statistic) {
    Gathering gathering;
    if (answer.points)
        for (const Datapoint& point : *answer.points)
            gathering.add(point.seconds, figureOf(point, statistic), point.unit);
    return std::move(gathering).samples();
}

Samples samplesOf(const std::vector<DataResult>& results, std::string_view id) {
    Gathering gathering;
    for (const auto& result : results) {
        if (result.id != id || !result.seconds || !result.values) continue;
        const auto count = std::min(result.seconds->size(), result.values->size());
        for (std::size_t i = 0; i < count; ++i)
            gathering.add((*result.seconds)[i], (*result.values)[i], std::nullopt);
    }
    return std::move(gathering).samples();
}

StatisticsQuery statisticsQuery(const MetricStat& stat, std::int64_t start, std::int64_t end) {
    StatisticsQuery query{.namespace_ = stat.metric.namespace_.value_or(""),
                          .name = stat.metric.name.value_or(""),
                          .dimensions = stat.metric.dimensions.value_or(std::vector<Dimension>{}),
                          .start = start,
                          .end = end,
                          .period = stat.period,
                          .unit = stat.unit};
    (plain(stat.statistic) ? query.statistics : query.percentiles) = {stat.statistic};
    return query;
}

}  // namespace tessary::aws
