#include "feed/notices/notices.h"

#include <set>

#include "platform/foundation/json_writing.h"
#include "support/golden.h"

namespace tessary::notices {
namespace {

using rounds::Target;

rounds::Outcome outcomeOf(const std::string& said, const Target& target) {
    if (said == "failed") return rounds::Failed{"no answer"};
    if (said == "expired") return rounds::SignInExpired{.words = "sign in <here>"};
    rounds::Answered answer;
    for (const auto& name : words(replaced(said, "+", " ")))
        answer.alarms.push_back(
            {unescaped(name), target.profile, target.region, 0, "because\nof it"});
    return answer;
}

/// What comes on the screen, and of what is there what goes.
std::string shown(const Telling& telling, std::int64_t seconds, std::set<std::string>& screen) {
    std::string text;
    for (const auto& matter : telling.over)
        if (screen.erase(matter) > 0) text += "closes " + replaced(matter, "\n", "/") + '\n';
    for (const auto& [matter, title, body, link, isUrgent] : telling.notices)
        text += std::to_string(seconds) + (screen.insert(matter).second ? "" : " instead") +
                (isUrgent ? "! " : ": ") + title + " | " + replaced(body, "\n", " / ") + " | " +
                link + '\n';
    return text;
}

/// A case is a row of rounds, SECONDS:TARGET=OUTCOME,...; what is remembered goes through its text,
/// as it does at a restart. A target is PROFILE.REGION; "x*" is left out in all of them.
TEST(Notices, TellWhatHasChanged) {
    expectTranscript("notices.txt", [](const std::string& line) {
        std::vector<Said> said;
        std::set<std::string> screen;
        std::string text;
        for (const auto& round : words(line)) {
            const auto seconds = std::stoll(round);
            std::vector<Target> targets;
            std::vector<rounds::Outcome> outcomes;
            for (const auto& [name, outcome] :
                 pairs(replaced(round.substr(round.find(':') + 1), ",", " "))) {
                targets.push_back(
                    {name.substr(0, name.find('.')), name.substr(name.find('.') + 1), {"x*"}});
                outcomes.push_back(outcomeOf(outcome, targets.back()));
            }
            const auto telling = tell(said, targets, outcomes, seconds * 1000);
            text += shown(telling, seconds, screen);
            said.clear();
            for (const auto& each : telling.said)
                said.push_back(foundation::decodeJSON<Said>(foundation::toJSON(each)).value());
        }
        return text.empty() ? "nothing" : text;
    });
}

}  // namespace
}  // namespace tessary::notices
