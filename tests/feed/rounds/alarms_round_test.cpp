#include "feed/rounds/alarms_round.h"

#include <gtest/gtest.h>
#include <map>
#include <set>

#include "support/golden.h"

namespace tessary::rounds {
namespace {

/// "a,b" are the alarms of a page, "a,b+" of one with another behind it; else what went wrong.
PageAnswer page(const std::string& said) {
    if (said == "expired") return SignInExpired{.words = "sign in"};
    if (const auto kind = foundation::parse<aws::Trouble::Kind>(said))
        return aws::Trouble{*kind, said};
    using Alarms = std::vector<aws::DescribedAlarm>;
    aws::AlarmsPage page{.metricAlarms = Alarms{}, .compositeAlarms = Alarms{}};
    for (const auto& name : words(replaced(replaced(said, "+", ""), ",", " ")))
        (name.starts_with("c-") ? page.compositeAlarms : page.metricAlarms)
            ->push_back({.name = name});
    if (said.ends_with('+')) page.next = "next";
    return page;
}

std::string described(const Outcome& outcome) {
    if (const auto* failed = std::get_if<Failed>(&outcome)) return "failed: " + failed->words;
    if (const auto* expired = std::get_if<SignInExpired>(&outcome))
        return "expired: " + expired->words;
    std::string names;
    for (const auto& alarm : std::get<Answered>(outcome).alarms)
        names += ' ' + alarm.name + '@' + alarm.region;
    return "answered" + names;
}

/// A case is a target's profile.region and its pages: "p.eu=a+|b p.us=expired".
TEST(AlarmsRound, AsksEachTargetToItsEnd) {
    expectTranscript("alarms_round.txt", [](const std::string& line) {
        std::vector<Target> targets;
        std::map<std::string, std::string> left;
        std::set<std::string> asked;
        for (const auto& [where, pages] : pairs(line)) {
            const auto dot = where.find('.');
            targets.push_back({where.substr(0, dot), where.substr(dot + 1), {"no-*", "?"}});
            left[where] = pages;
        }
        AlarmsRound round{
            targets, [&](const Target& target, const auto& next, const TakePage& take) {
                auto& pages = left[target.profile + '.' + target.region];
                const auto end = std::min(pages.find('|'), pages.size());
                const auto said = pages.substr(0, end);
                EXPECT_EQ(next.has_value(), !asked.insert(target.profile + target.region).second);
                if (said != "endless+") pages.erase(0, end + 1);
                take(page(said));
            }};
        round.start();
        std::string said;
        for (const auto& outcome : round.outcomes()) said += described(outcome) + '\n';
        return said + std::to_string(round.ignored()) + " left out";
    });
}

}  // namespace
}  // namespace tessary::rounds
