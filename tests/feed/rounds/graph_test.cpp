#include "feed/rounds/graph.h"

#include <gtest/gtest.h>

#include "support/golden.h"

namespace tessary::rounds {
namespace {

/// A case is what an alarm tells of itself.
TEST(Graph, IsWhatAnAlarmWatches) {
    expectTranscript("graphs.txt", [](const std::string& line) -> std::string {
        const auto alarm = foundation::decodeJSON<aws::DescribedAlarm>(
            R"({"AlarmName":"a","StateValue":"OK","StateReason":"",)" + line.substr(1));
        if (!alarm) return alarm.fault().message();
        const auto graph = graphOf(*alarm);
        if (!graph) return "none";
        const auto [profile, region, action, body] = graph->question(1731772840);
        return graph->metricName().value_or("no name") + ' ' + std::to_string(graph->period()) +
               ' ' + graph->unit().value_or("no unit") + '\n' + action + ' ' + body;
    });
}

}  // namespace
}  // namespace tessary::rounds
