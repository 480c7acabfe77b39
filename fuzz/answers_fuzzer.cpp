// Any bytes as what CloudWatch answers: each decoder takes it or says on one line why not, and what
// is made of it keeps the snapshots' rules.
#include <algorithm>
#include <cmath>

#include "feed/aws/alarms.h"
#include "feed/aws/metrics.h"
#include "feed/aws/statistics.h"
#include "feed/aws/trouble.h"
#include "feed/rounds/graph.h"
#include "feed/rounds/listing.h"
#include "feed/rounds/targets.h"
#include "fuzzer.h"
#include "platform/foundation/json_writing.h"
#include "platform/foundation/visible_text.h"
#include "snapshot/alarms_snapshot.h"

namespace tessary::fuzz {
namespace {

using foundation::decodeJSON;

constexpr std::int64_t now = 1731772800;

template <class Record>
std::optional<Record> decoded(std::string_view bytes) {
    auto record = decodeJSON<Record>(bytes);
    if (record) return *std::move(record);
    require(isOneLine(record.fault().message()), "a fault is one line", record.fault().message());
    return std::nullopt;
}

void checkGraph(const rounds::Graph& graph) {
    require(graph.period() > 0, "a series has a period");
    if (graph.period() > 1'000'000'000) return;  // no settings and no alarm have it
    const auto question = graph.question(now);
    require(question.action.starts_with("GetMetric"), "it is asked", question.action);
    require(graph.isFree() == (question.action == "GetMetricStatistics"), "what is free is");
    require(bool{decodeJSON<aws::StatisticsAnswer>(question.body)},
            "a question is an object in JSON", question.body);
}

void checkAlarms(std::string_view bytes) {
    const auto page = decoded<aws::AlarmsPage>(bytes);
    if (!page) return;
    rounds::Answered answer;
    for (const auto& alarms : {page->metricAlarms, page->compositeAlarms}) {
        for (const auto& alarm : alarms.value_or(std::vector<aws::DescribedAlarm>{})) {
            answer.alarms.push_back({alarm.name, "p", "r", alarm.since(), alarm.reason});
            if (const auto graph = rounds::graphOf(alarm)) checkGraph(*graph);
        }
    }
    const auto known = rounds::learned({.profile = "p", .region = "r"}, answer, now);
    const auto file = rounds::alarmsFile({known}, 60);
    require(file && file->firing == static_cast<std::int64_t>(answer.alarms.size()),
            "each alarm counts");
    require(file->topAlarms.size() == std::min<std::size_t>(answer.alarms.size(), 50),
            "fifty are listed");
    const auto printed = foundation::toJSON(*file);
    require(decodeJSON<snapshot::AlarmsSnapshot>(printed).value() == *file,
            "the file that is written is usable", printed);
}

void checkMetrics(std::string_view bytes) {
    const auto page = decoded<aws::MetricsPage>(bytes);
    if (!page || !page->metrics) return;
    const auto listing =
        rounds::listed({{.place = {"p", "r"}, .items = *page->metrics}}, settings::Settings{});
    require(listing.metrics.size() <= page->metrics->size(), "nothing is listed that is not told");
    for (const auto& metric : listing.metrics)
        require(metric.id.starts_with("p/r/" + metric.namespace_ + '/' + metric.name),
                "an id names its metric", metric.id);
}

void checkSamples(const aws::Samples& samples) {
    const auto& points = samples.points;
    const auto isLater = [](const auto& a, const auto& b) { return a.t >= b.t; };
    require(std::ranges::adjacent_find(points, isLater) == points.end(), "time goes on");
    require(std::ranges::all_of(points, [](const auto& each) { return std::isfinite(each.v); }),
            "each value is finite");
    require(samples.unit != "None", "no unit is none");
}

void checkRefusal(int status, std::string_view bytes) {
    const auto trouble = aws::troubleOf(aws::refusalOf(status, bytes));
    require(isOneLine(trouble.words) && !trouble.words.empty(), "a trouble is one line",
            trouble.words);
    require(foundation::visible(trouble.words) == trouble.words, "and no more than 200 cells",
            trouble.words);
}

}  // namespace

void fuzz(std::string_view bytes) {
    checkAlarms(bytes);
    checkMetrics(bytes);
    if (const auto answer = decoded<aws::StatisticsAnswer>(bytes))
        for (const char* statistic : {"Average", "Sum", "p99.9"})
            checkSamples(aws::samplesOf(*answer, statistic));
    if (const auto answer = decoded<aws::DataAnswer>(bytes))
        if (answer->results) checkSamples(aws::samplesOf(*answer->results, "shown"));
    for (const int status : {0, 400, 429, 500}) checkRefusal(status, bytes);
}

}  // namespace tessary::fuzz
