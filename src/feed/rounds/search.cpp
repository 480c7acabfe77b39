#include "feed/rounds/search.h"

#include <algorithm>
#include <utility>

#include "platform/foundation/json_writing.h"

namespace tessary::rounds {

namespace {

constexpr int mostSearched = 200;  // pages, however few items are in one

template <class Items>
void append(Items& items, const std::optional<Items>& more) {
    if (more) items.insert(items.end(), more->begin(), more->end());
}

using Next = std::optional<std::string>;
using Read = foundation::Result<Next, foundation::DecodingFault>;

/// Adds the page's items; what names the page behind it, empty for none.
Read readPage(const std::string& body, std::vector<aws::DescribedAlarm>& items) {
    return foundation::decodeJSON<aws::AlarmsPage>(body).transform([&](const auto& page) {
        append(items, page.metricAlarms);
        append(items, page.compositeAlarms);
        return page.next;
    });
}
Read readPage(const std::string& body, std::vector<aws::Metric>& items) {
    return foundation::decodeJSON<aws::MetricsPage>(body).transform([&](const auto& page) {
        append(items, page.metrics);
        return page.next;
    });
}

}  // namespace

template <class Query>
Search<Query>::Search(const std::vector<Place>& places, Query query, Ask ask)
    : query_(std::move(query)),
      ask_(std::move(ask)),
      share_(mostItems / std::max<std::size_t>(places.size(), 1)) {
    for (const auto& place : places) states_.push_back({.found = {.place = place}});
}

template <class Query>
void Search<Query>::start() {
    for (State& state : states_) ask(state, std::nullopt);
}

template <class Query>
void Search<Query>::ask(State& state, const std::optional<std::string>& next) {
    auto query = query_;
    query.next = next;
    const auto& [profile, region] = state.found.place;
    ask_({profile, region, Sought<Query>::action, foundation::toJSON(query)},
         [this, &state](const Reply& reply) { take(state, reply); });
}

template <class Query>
void Search<Query>::take(State& state, const Reply& reply) {
    if (const auto* expired = std::get_if<SignInExpired>(&reply))
        return void(state.fault = *expired);
    if (const auto* trouble = std::get_if<aws::Trouble>(&reply))
        return void(state.fault = *trouble);
    auto& [place, items, isCut, authExpired, fault] = state.found;
    const auto next = readPage(std::get<std::string>(reply), items);
    if (!next)
        return void(state.fault =
                        aws::Trouble{aws::Trouble::Kind::passing,
                                     "The answer is not understood: " + next.fault().message()});
    state.isAnswered = true;
    const bool goesOn = *next && !(*next)->empty();
    isCut = items.size() > share_ ||
            (goesOn && (items.size() == share_ || ++state.pages == mostSearched));
    if (items.size() > share_) items.resize(share_);
    if (goesOn && !isCut) ask(state, *next);
}

template <class Query>
Finding<typename Search<Query>::Item> Search<Query>::findingOf(const State& state) const {
    auto finding = state.found;
    if (!state.fault && !state.isAnswered) finding.fault = "No answer";
    if (!state.fault) return finding;
    finding.isCut = state.isAnswered;
    const auto& [profile, region] = finding.place;
    const auto isTaken = [&profile = profile](const State& other) {
        return other.isAnswered && other.found.place.profile == profile;
    };
    if (const auto* expired = std::get_if<SignInExpired>(&*state.fault)) {
        finding.authExpired = true;
        finding.fault = expired->words;
        return finding;
    }
    const auto& trouble = std::get<aws::Trouble>(*state.fault);
    finding.authExpired =
        trouble.kind == aws::Trouble::Kind::unknownKeys && std::ranges::none_of(states_, isTaken);
    finding.fault =
        finding.authExpired ? trouble.words : aws::toldOf(trouble, Sought<Query>::action, region);
    return finding;
}

template <class Query>
std::vector<Finding<typename Search<Query>::Item>> Search<Query>::findings() const {
    std::vector<Finding<Item>> findings;
    for (const State& state : states_) findings.push_back(findingOf(state));
    return findings;
}

template class Search<aws::AlarmsQuery>;
template class Search<aws::MetricsQuery>;

}  // namespace tessary::rounds
