#include "feed/aws/statistics.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>

#include "support/golden.h"

namespace tessary::aws {
namespace {

std::string described(const Samples& samples) {
    std::string said = samples.unit.value_or("no unit") + ':';
    for (const auto& [t, v] : samples.points)
        said += ' ' + std::to_string(t) + '=' + std::to_string(v);
    return said;
}

/// A case is a statistic alone, which action knows it; or with an answer, what is made of it; or
/// "#ID" with an answer of the other action.
TEST(Statistics, AreReadFromEitherAnswer) {
    expectTranscript("statistics.txt", [](const std::string& line) -> std::string {
        const auto cut = std::min(line.find(' '), line.size());
        const auto name = line.substr(0, cut), body = line.substr(cut);
        if (body.empty()) return toldByStatistics(name) ? "GetMetricStatistics" : "GetMetricData";
        if (name.starts_with('#')) {
            const auto answer = foundation::decodeJSON<DataAnswer>(body);
            return answer ? described(samplesOf(*answer->results, name.substr(1)))
                          : answer.fault().message();
        }
        const auto answer = foundation::decodeJSON<StatisticsAnswer>(body);
        return answer ? described(samplesOf(*answer, name)) : answer.fault().message();
    });
}

/// Whatever four points say, in whatever order.
TEST(Statistics, AreSortedAndFinite) {
    const std::vector<Datapoint> told{
        {.seconds = 60, .average = 1.0, .unit = "Percent"},
        {.seconds = 120, .average = 2.0, .unit = "Percent"},
        {.seconds = 120, .average = 3.0, .unit = "None"},
        {.seconds = -1e300, .average = 4.0},
        {.seconds = 30, .average = "NaN", .unit = "Percent"},
        {.seconds = 90},
        {.seconds = 60.0004, .average = -1e308},
    };
    for (std::size_t which = 0; which < 7 * 7 * 7 * 7; ++which) {
        StatisticsAnswer answer{.points = std::vector<Datapoint>{}};
        for (std::size_t rest = which; answer.points->size() < 4; rest /= 7)
            answer.points->push_back(told[rest % 7]);
        const auto [points, unit] = samplesOf(answer, "Average");
        ASSERT_NE(unit, "None");
        for (std::size_t i = 0; i < points.size(); ++i)
            ASSERT_TRUE(std::isfinite(points[i].v) && (i == 0 || points[i - 1].t < points[i].t));
        const auto isGood = [](const auto& point) {
            return point.seconds >= 60 && point.average.index() == 1;
        };
        ASSERT_EQ(points.empty(), std::ranges::none_of(*answer.points, isGood)) << which;
    }
}

}  // namespace
}  // namespace tessary::aws
