#include "feed/rounds/search.h"

#include <gtest/gtest.h>
#include <map>

#include "feed/rounds/listing.h"
#include "platform/foundation/json_writing.h"
#include "support/golden.h"

namespace tessary::rounds {
namespace {

/// The page of what is said: "a,B!" are an alarm that is OK and one in ALARM, "a+" has another page
/// behind it; else what went wrong.
Reply reply(const std::string& said) {
    if (said == "expired") return SignInExpired{.words = "sign in"};
    if (said == "half") return std::string{"{"};
    if (const auto kind = foundation::parse<aws::Trouble::Kind>(said))
        return aws::Trouble{*kind, said};
    std::string alarms, metrics;
    for (const auto& word : words(replaced(replaced(said, "+", ""), ",", " "))) {
        const auto name = replaced(word, "!", "");
        const auto state = word == name ? "OK" : "ALARM";
        alarms += (alarms.empty() ? "" : ",") + ("{\"AlarmName\":\"" + name) +
                  "\",\"StateReason\":\"\",\"StateValue\":\"" + state + "\"}";
        metrics += (metrics.empty() ? "" : ",") +
                   ("{\"Namespace\":\"n\",\"MetricName\":\"" + name) +
                   R"(","Dimensions":[{"Name":"d","Value":"v"}]})";
    }
    const std::string next = said.ends_with('+') ? ",\"NextToken\":\"next\"" : "";
    return "{\"MetricAlarms\":[" + alarms + "],\"Metrics\":[" + metrics + "]" + next + "}";
}

settings::Settings pinned() {
    return {.alarms = {{.id = "own", .profile = "p", .region = "eu", .name = "CPU"}},
            .metrics = {
                {.id = "other", .profile = "p", .region = "eu", .namespace_ = "n", .name = "CPU"},
                {.id = "mine",
                 .profile = "p",
                 .region = "eu",
                 .namespace_ = "n",
                 .name = "CPU",
                 .dimensions = {{"d", "v"}},
                 .statistic = "p99"}}};
}

template <class Query>
auto found(const std::string& line) {
    std::vector<Place> places;
    std::map<std::string, std::string> left;
    for (const auto& [where, pages] : pairs(line)) {
        const auto dot = where.find('.');
        places.push_back({where.substr(0, dot), where.substr(dot + 1)});
        left[where] = pages;
    }
    Search<Query> search{places, {}, [&](const Question& asked, const TakeReply& take) {
                             EXPECT_EQ(asked.action, Sought<Query>::action);
                             auto& pages = left[asked.profile + '.' + asked.region];
                             const auto said = pages.substr(0, pages.find('|'));
                             pages.erase(0, said.size() + 1);
                             if (said != "silent") take(reply(said));
                         }};
    search.start();
    return search.findings();
}

/// A case is a text that is looked for, and each place's profile.region and its pages.
TEST(Search, ListsWhatEachPlaceHasAndWhatItLacks) {
    expectTranscript("searches.txt", [](const std::string& line) {
        const auto text = line.substr(0, line.find(' '));
        const auto alarms = found<aws::AlarmsQuery>(line.substr(text.size()));
        const auto metrics = found<aws::MetricsQuery>(line.substr(text.size()));
        std::string said = foundation::toJSON(listed(alarms, pinned(), text)) + '\n' +
                           foundation::toJSON(listed(metrics, pinned())) + '\n';
        for (const auto& finding : alarms) {
            const auto [firing, all] = census(finding, {"", "", {"no-*"}});
            said += std::to_string(firing) + " of " + std::to_string(all) +
                    (finding.authExpired ? " paused " : " ");
        }
        return said;
    });
}

/// However many places share the bound, and however the pages are cut.
TEST(Search, EndsAtItsBound) {
    for (const std::size_t places : {1U, 3U, 7U})
        for (const std::size_t page : {1U, 500U, 15'000U}) {
            const auto most = Search<aws::MetricsQuery>::mostItems;
            std::string items = "{\"Metrics\":[{}";
            for (std::size_t i = 1; i < page; ++i) items += ",{}";
            items += "],\"NextToken\":\"n\"}";
            std::size_t calls = 0;
            Search<aws::MetricsQuery> search{std::vector(places, Place{"p", "r"}),
                                             {},
                                             [&](const Question&, const TakeReply& take) {
                                                 ++calls;
                                                 take(items);
                                             }};
            search.start();
            std::size_t all = 0;
            for (const auto& finding : search.findings()) {
                EXPECT_TRUE(finding.isCut && !finding.fault);
                all += finding.items.size();
            }
            EXPECT_LE(all, most);
            EXPECT_LE(calls, places * 200);
            EXPECT_EQ(all + places > most, page > 1) << all;
        }
}

}  // namespace
}  // namespace tessary::rounds
