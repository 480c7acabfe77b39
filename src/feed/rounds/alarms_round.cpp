#include "feed/rounds/alarms_round.h"

#include <algorithm>
#include <fnmatch.h>
#include <utility>

namespace tessary::rounds {

namespace {

/// Of a hundred alarms each; whoever has more is not told apart from an endless answer.
constexpr int mostPages = 200;

snapshot::Alarm listed(const aws::DescribedAlarm& alarm, const Target& target) {
    return {alarm.name, target.profile, target.region, alarm.since(), alarm.reason};
}

}  // namespace

bool Target::leavesOut(const std::string& name) const {
    return std::ranges::any_of(ignore, [&](const std::string& pattern) {
        return ::fnmatch(pattern.c_str(), name.c_str(), FNM_NOESCAPE) == 0;
    });
}

AlarmsRound::AlarmsRound(const std::vector<Target>& targets, AskPage ask) : ask_(std::move(ask)) {
    for (const Target& target : targets) states_.push_back({.target = target});
}

void AlarmsRound::start() {
    for (State& state : states_) ask(state, std::nullopt);
}

void AlarmsRound::ask(State& state, const std::optional<std::string>& next) {
    ask_(state.target, next, [this, &state](const PageAnswer& answer) { take(state, answer); });
}

void AlarmsRound::take(State& state, const PageAnswer& answer) {
    if (const auto* expired = std::get_if<SignInExpired>(&answer)) {
        state.end = *expired;
        return;
    }
    if (const auto* trouble = std::get_if<aws::Trouble>(&answer)) {
        state.end = *trouble;
        return;
    }
    const auto& page = std::get<aws::AlarmsPage>(answer);
    for (const auto& alarms : {page.metricAlarms, page.compositeAlarms})
        if (alarms) take(state, *alarms);
    if (!page.next || page.next->empty()) {
        state.end = std::move(state.answer);
        return;
    }
    if (++state.pages < mostPages) return ask(state, page.next);
    state.end = aws::Trouble{aws::Trouble::Kind::lasting, "the answer has no end"};
}

void AlarmsRound::take(State& state, const std::vector<aws::DescribedAlarm>& alarms) {
    for (const auto& alarm : alarms) {
        if (state.target.leavesOut(alarm.name))
            ++ignored_;
        else
            state.answer.alarms.push_back(listed(alarm, state.target));
    }
}

std::vector<Outcome> AlarmsRound::outcomes() const {
    std::vector<Outcome> outcomes;
    for (const State& state : states_) outcomes.push_back(outcomeOf(state));
    return outcomes;
}

bool AlarmsRound::isTaken(const std::string& profile) const {
    return std::ranges::any_of(states_, [&](const State& state) {
        return state.target.profile == profile && state.end &&
               std::holds_alternative<Answered>(*state.end);
    });
}

Outcome AlarmsRound::outcomeOf(const State& state) const {
    if (!state.end) return Failed{"no answer"};
    if (const auto* answer = std::get_if<Answered>(&*state.end)) return *answer;
    if (const auto* expired = std::get_if<SignInExpired>(&*state.end)) return *expired;
    const auto& trouble = std::get<aws::Trouble>(*state.end);
    if (trouble.kind != aws::Trouble::Kind::unknownKeys) return Failed{trouble.words};
    if (!isTaken(state.target.profile)) return SignInExpired{.words = trouble.words};
    return Failed{aws::toldOf(trouble, "DescribeAlarms", state.target.region)};
}

}  // namespace tessary::rounds
