// Everything of a kind that some places have, page after page.
//
//     Search<aws::MetricsQuery> search{places, {.namespace_ = "AWS/SQS"}, ask};
//     search.start();                          // each place's first page; ask answers when it can
//     search.findings()[0].items.size()        // once all have been answered
#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "feed/aws/alarms.h"
#include "feed/aws/metrics.h"
#include "feed/aws/place.h"
#include "feed/rounds/pins_round.h"

namespace tessary::rounds {

using aws::Place;

/// What a query brings.
template <class Query>
struct Sought;
template <>
struct Sought<aws::AlarmsQuery> {
    using Item = aws::DescribedAlarm;
    static constexpr const char* action = "DescribeAlarms";
};
template <>
struct Sought<aws::MetricsQuery> {
    using Item = aws::Metric;
    static constexpr const char* action = "ListMetrics";
};

template <class Item>
struct Finding {
    Place place{};
    std::vector<Item> items{};
    bool isCut{};                        ///< there is more of it
    bool authExpired{};                  ///< somebody has to sign in
    std::optional<std::string> fault{};  ///< why it is not all there, in words for a person
};

/// Has to outlive its questions.
template <class Query>
class Search {
public:
    using Item = typename Sought<Query>::Item;
    /// The most that is looked through, shared by the places.
    static constexpr std::size_t mostItems = 10'000;

    Search(const std::vector<Place>& places, Query query, Ask ask);

    void start();

    /// Of each place, in their order. Keys that nobody knows mean that the sign-in has expired,
    /// unless another region of the profile took them.
    std::vector<Finding<Item>> findings() const;

private:
    struct State {
        Finding<Item> found{};
        int pages{};
        bool isAnswered{};
        std::optional<std::variant<SignInExpired, aws::Trouble>> fault{};
    };
    void ask(State& state, const std::optional<std::string>& next);
    void take(State& state, const Reply& reply);
    Finding<Item> findingOf(const State& state) const;

    std::vector<State> states_{};
    Query query_;
    Ask ask_;
    std::size_t share_;  ///< of a place
};

}  // namespace tessary::rounds
