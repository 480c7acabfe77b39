#include "feed/aws/client.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "feed/aws/alarms.h"
#include "feed/cloud_watch.h"
#include "platform/foundation/json_writing.h"
#include "support/golden.h"

namespace tessary::aws {
namespace {

using testing::HasSubstr;
using testing::Not;

const Keys keys{.id = "AKIDEXAMPLE", .secret = "made/up+secret", .token = "made//up+token=="};

const Keys lasting{.id = "AKIDSTATIC", .secret = "made/up"};
const Keys broken{.id = "AKIDEXAMPLE", .secret = "made/up+secret", .token = "a\r\nX-More: 1"};

std::string stateWith(const std::string& faults) {
    return replaced(contents(storedGolden("cloudwatch.json", __FILE__)), "\"FAULTS\"", faults);
}

std::string shown(const Answer& answer) {
    if (answer) return answer->size() > 2000 ? "a long body" : *answer;
    return std::string{foundation::name(answer.fault().kind)} + " | " + answer.fault().words;
}

/// A case is an address, the faults that meet it, an action and its body.
TEST(Client, EndsEveryCall) {
    const CloudWatch cloudWatch{stateWith("{}")};
    expectTranscript("calls.txt", [&](const std::string& line) {
        const auto word = words(line);
        cloudWatch.set(stateWith("{\"us-east-1\": " + word[1] + "}"));
        setVariable("AWS_CA_BUNDLE",
                    word[0].ends_with("#trusted") ? cloudWatch.certificate() : "-");
        setVariable("http_proxy",
                    word[0].ends_with("#proxy") ? "127.0.0.1:" + cloudWatch.port : "-");
        const bool isLate = word[1].find("hang") != line.npos || word[1].find("slow") != line.npos;
        Client client{{.call = isLate ? 0.3 : 5, .pause = 60, .chance = [] { return 0.0; }}};
        std::string said = "not answered";
        const auto url = replaced(word[0], "SECURE", "127.0.0.1:" + cloudWatch.securePort);
        client.call({replaced(url, "PLAIN", "127.0.0.1:" + cloudWatch.port), "us-east-1", word[2],
                     word[3], word[0].ends_with("#broken") ? broken : keys},
                    [&](const Answer& answer) { said = shown(answer); });
        const double began = steadySeconds();
        client.run();
        EXPECT_LT(steadySeconds() - began, 5) << line;
        for (const auto& secret : {keys.id, keys.secret, keys.token})
            EXPECT_THAT(said, Not(HasSubstr(secret)));
        return said;
    });
}

TEST(Client, KeepsItsConnectionsAndTheDeadFromTheLiving) {
    const CloudWatch cloudWatch{stateWith(
        R"({"dead-0": "hang", "dead-1": "hang", "dead-2": "hang", "dead-3": "hang", "count": "counts"})")};
    Client client{{.budget = 2, .call = 0.9, .pause = 0}};
    const auto body = foundation::toJSON(AlarmsQuery{.state = "ALARM"});
    std::map<std::string, int> said;
    const std::function<void(std::string, int)> ask = [&](const std::string& region, int pages) {
        client.call(
            {"http://127.0.0.1:" + cloudWatch.port, region, "DescribeAlarms", body, lasting},
            [&, region, pages](const Answer& answer) {
                ++said[region.substr(0, region.find('-')) + ' ' + shown(answer)];
                if (answer && pages > 1) ask(region, pages - 1);
            });
    };
    const auto round = [&] {
        for (const char* region : {"live-0", "live-1", "live-1", "live-2", "live-2"})
            ask(region, 5);
        client.run();
    };
    round();
    ask("count", 1);
    client.run();
    for (int i = 0; i < 12; ++i) ask("dead-" + std::to_string(i % 4), 1);
    round();
    EXPECT_EQ(said, (std::map<std::string, int>{
                        {R"(live {"MetricAlarms": [], "CompositeAlarms": []})", 50},
                        {R"(count {"connections": 4, "requests": 26})", 1},
                        {"dead passing | Cut off at the end of the round", 8},
                        {"dead passing | Cut off at the end of the round: No answer in time", 4},
                    }));
}

}  // namespace
}  // namespace tessary::aws
