#include "feed/rounds/pins_round.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <map>

#include "platform/foundation/json_writing.h"
#include "support/golden.h"

namespace tessary::rounds {
namespace {

using Said = std::map<std::string, std::string>;  // by action, or by action@region

const std::string cpu =
    R"({"AlarmName":"cpu","StateValue":"ALARM","StateReason":"high","StateUpdatedTimestamp":9,)"
    R"("StateTransitionedTimestamp":7.5,"MetricName":"CPU","Namespace":"N","Statistic":"Average",)"
    R"("Period":300,"Threshold":80,"ComparisonOperator":"GreaterThanThreshold","Unit":"Percent"})";
const std::string math =
    R"({"AlarmName":"math","StateValue":"OK","StateReason":"","Metrics":[{"Id":"e","Expression":"1"}]})";
const std::string both = R"({"AlarmName":"both","StateValue":"OK","StateReason":"fine"})";
const std::string more = R"("NextToken":"n",)";

settings::Settings pinned() {
    return {.alarms{{"1", "One", "p", "eu", "cpu"},
                    {"2", "", "p", "eu", "both"},
                    {"3", "", "p", "us", "math"}},
            .metrics{{"4", "", "p", "us", "N", "Age", {{"Queue", "q"}}, "Sum", 60}}};
}

std::string body(const Question& question, bool isMore, bool isNext) {
    const std::string begin = '{' + (isMore ? more : "");
    if (question.action == "DescribeAlarms")
        return begin + (isNext ? "" : R"("MetricAlarms":[)" + cpu + ',' + math + "],") +
               R"("CompositeAlarms":[)" + (isMore ? "" : both) + "]}";
    if (question.action == "GetMetricData")
        return begin + R"("MetricDataResults":[{"Id":"e","Timestamps":[)" + (isNext ? "1" : "2") +
               R"(],"Values":[)" + (isNext ? "6" : "7") + "]}]}";
    return R"({"Datapoints":[{"Timestamp":2,"Average":4,"Sum":5,"Unit":"Count"},)"
           R"({"Timestamp":1,"Average":2,"Sum":3,"Unit":"Count"}]})";
}

/// "ok", "pages", "endless", "empty", "half" and "Forbidden" are bodies; "none" is nothing at all;
/// else what went wrong.
void reply(const Question& question, const std::string& said, const TakeReply& take) {
    const bool isNext = question.body.find("NextToken") != std::string::npos;
    if (said == "none") return;
    if (said == "expired") return take(SignInExpired{.words = "sign in"});
    if (said == "empty") return take("{}");
    if (said == "half") return take(R"({"MetricAlarms":[)");
    if (said == "Forbidden" || said == "InternalError")
        return take(R"({"MetricDataResults":[{"Id":"e","StatusCode":")" + said + "\"}]}");
    if (const auto kind = foundation::parse<aws::Trouble::Kind>(said))
        return take(aws::Trouble{*kind, said});
    take(body(question, said == "endless" || (said == "pages" && !isNext), isNext));
}

KnownPins roundOf(const KnownPins& known, std::int64_t seconds, Said said, std::string* asked,
                  const settings::Settings& settings = pinned()) {
    PinsRound round{settings, known, seconds * 1000,
                    [&](const Question& question, const auto& take) {
                        if (asked) *asked += ' ' + question.action + '@' + question.region;
                        const auto own = said.find(question.action + '@' + question.region);
                        const auto any = said.find(question.action);
                        reply(question,
                              own != said.end()   ? own->second
                              : any != said.end() ? any->second
                                                  : "ok",
                              take);
                    }};
    if (said.contains("trust")) round.trust({said["trust"]});
    round.start();
    return round.known();
}

template <class Pin>
std::string described(const KnownPin<Pin>& known) {
    const Pin& pin = known.shown;
    std::string said = pin.id + ':';
    if constexpr (requires { pin.state; })
        said += ' ' + pin.state.value_or("unknown") + " since " +
                std::to_string(pin.stateUpdatedMs.value_or(0));
    for (const auto& point : pin.points) said += ' ' + std::to_string(std::lround(point.v));
    if (pin.unit) said += ' ' + *pin.unit;
    return said + (pin.authExpired ? ", expired" : "") + (pin.error ? ", " + *pin.error : "") +
           '\n';
}

std::string described(const KnownPins& known) {
    std::string said;
    for (const auto& pin : known.alarms) said += described(pin);
    for (const auto& pin : known.metrics) said += described(pin);
    return said;
}

/// A case is rounds, each the seconds when it is made and what is answered to an action, "ok"
/// where nothing is told; all pins are shown where one of them has changed.
TEST(PinsRound, AsksWhatIsDueAndShowsWhatCame) {
    expectTranscript("pins_round.txt", [](const std::string& line) {
        KnownPins known;
        std::string said, before;
        for (const auto& [seconds, what] : pairs(line)) {
            Said answers;
            for (const auto& [action, answer] : pairs(replaced(replaced(what, ",", " "), ":", "=")))
                answers[action] = answer;
            std::string asked;
            known = roundOf(known, std::stoll(seconds), answers, &asked);
            said += seconds + asked + '\n';
            const auto now = described(known);
            if (now != before) said += now;
            before = now;
        }
        return said;
    });
}

/// Whatever three rounds bring: no pin is lost, none loses points to an answer without any, and
/// those that it has are in order.
TEST(PinsRound, LosesNothing) {
    const std::vector<std::string> all{"ok",      "half",   "none",       "expired",
                                       "passing", "mayNot", "unknownKeys"};
    for (std::size_t which = 0; which < 2 * 7 * 7 * 7; ++which) {
        KnownPins known;
        std::size_t rest = which / 2, had = 0;
        for (int round = 0; round < 3; ++round, rest /= 7) {
            const bool isOfAlarms = which % 2 == 0;
            known = roundOf(
                known, 1000 + 301 * round,
                {{isOfAlarms ? "DescribeAlarms" : "GetMetricStatistics", all[rest % 7]}}, nullptr);
            ASSERT_EQ(known.alarms.size(), 3U);
            std::size_t count = 0;
            for (std::size_t i = 0; i < 3; ++i) {
                const auto& pin = known.alarms[i].shown;
                ASSERT_EQ(pin.id, pinned().alarms[i].id);
                ASSERT_TRUE(std::ranges::is_sorted(pin.points, {}, &snapshot::SnapshotPoint::t));
                ASSERT_EQ(pin.latest.has_value(), !pin.points.empty());
                count += pin.points.size();
            }
            count += known.metrics.at(0).shown.points.size();
            ASSERT_GE(count, had) << which;
            had = count;
        }
    }
}

TEST(PinsRound, KeepsWhatIsKnownOfTheSamePinAlone) {
    const auto known = roundOf({}, 1000, {}, nullptr);
    auto settings = pinned();
    settings.alarms[2].region = "ap";
    settings.metrics[0].dimensions["Queue"] = "other";
    settings.alarms[0].label = "CPU";
    const auto moved =
        roundOf(known, 1060, {{"DescribeAlarms", "passing"}, {"GetMetricStatistics", "passing"}},
                nullptr, settings);
    EXPECT_EQ(foundation::toJSON(moved.alarms[0].shown),
              R"({"id":"1","label":"CPU","profile":"p","region":"eu","alarmName":"cpu",)"
              R"("state":"ALARM","reason":"high","stateUpdatedMs":7500,"threshold":80,)"
              R"("comparison":"GreaterThanThreshold","unit":"Percent","metricName":"CPU",)"
              R"("periodSeconds":300,"points":[{"t":1000,"v":2},{"t":2000,"v":4}],)"
              R"("latest":{"t":2000,"v":4},"error":null,"authExpired":false})");
    const auto text = foundation::toJSON(moved.alarms[0]);
    EXPECT_EQ(foundation::toJSON(foundation::decodeJSON<KnownAlarm>(text).value()), text);
    EXPECT_TRUE(moved.alarms[2].shown.points.empty());
    EXPECT_TRUE(moved.metrics[0].shown.points.empty());
}

TEST(PinsRound, AsksForAHundredAlarmsACall) {
    settings::Settings settings;
    for (int i = 0; i < 500; ++i)
        settings.alarms.push_back(
            {std::to_string(i), "", "p", i % 2 ? "eu" : "us", std::to_string(i)});
    std::map<std::string, std::size_t> calls;
    std::size_t names = 0;
    PinsRound round{settings, {}, 0, [&](const Question& question, const auto&) {
                        const auto query =
                            foundation::decodeJSON<aws::AlarmsQuery>(question.body).value();
                        EXPECT_LE(query.names->size(), 100U);
                        names += query.names->size();
                        ++calls[question.region];
                    }};
    round.start();
    EXPECT_EQ(names, 500U);
    EXPECT_EQ(calls, (std::map<std::string, std::size_t>{{"eu", 3}, {"us", 3}}));
}

}  // namespace
}  // namespace tessary::rounds
