// A round of questions for the alarms of all watched targets.
//
//     AlarmsRound round{targets, ask};
//     round.start();                       // each target's first page; ask answers when it can
//     round.outcomes()[0]                  // Answered{...}, once all have been answered
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "feed/aws/alarms.h"
#include "feed/aws/trouble.h"
#include "feed/rounds/targets.h"

namespace tessary::rounds {

/// What is asked.
struct Target {
    std::string profile{};
    std::string region{};
    std::vector<std::string> ignore{};  ///< patterns of names that are left out

    bool leavesOut(const std::string& name) const;
    bool operator==(const Target&) const = default;
};

/// A page, that the profile has to sign in first, or why there is no answer.
using PageAnswer = std::variant<aws::AlarmsPage, SignInExpired, aws::Trouble>;
using TakePage = std::function<void(const PageAnswer&)>;
/// Asks for the alarms that are in ALARM, the page that `next` names or the first.
using AskPage =
    std::function<void(const Target&, const std::optional<std::string>& next, TakePage)>;

/// Has to outlive its questions.
class AlarmsRound {
public:
    AlarmsRound(const std::vector<Target>& targets, AskPage ask);

    void start();

    /// Of each target, in their order. Keys that nobody knows mean that the sign-in has expired,
    /// unless another region of the profile took them: then the region is not enabled.
    std::vector<Outcome> outcomes() const;
    /// How many alarms were left out by their names.
    std::int64_t ignored() const { return ignored_; }

private:
    struct State {
        Target target{};
        Answered answer{};
        int pages{};
        std::optional<std::variant<Answered, SignInExpired, aws::Trouble>> end{};
    };
    void ask(State& state, const std::optional<std::string>& next);
    void take(State& state, const PageAnswer& answer);
    void take(State& state, const std::vector<aws::DescribedAlarm>& alarms);
    bool isTaken(const std::string& profile) const;
    Outcome outcomeOf(const State& state) const;

    std::vector<State> states_{};
    AskPage ask_;
    std::int64_t ignored_{};
};

}  // namespace tessary::rounds
