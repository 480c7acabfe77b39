// A round of questions for everything that is pinned.
//
//     PinsRound round{settings, known, now, ask};
//     round.start();                       // ask answers when it can
//     known = round.known();               // once all have been answered
//     pinsFile(known.alarms, 60, now)      // a pin of the settings each, in their order
//
// Alarms are asked for each time, a hundred names a call; the points of an alarm's metric and of a
// pinned metric as often as they change: no sooner than a pause (window.h) after they were told, or
// refused for good. What passes by itself and what waits for a sign-in is asked for again in the
// next round.
#pragma once

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <variant>
#include <vector>

#include "feed/aws/alarms.h"
#include "feed/aws/statistics.h"
#include "feed/aws/trouble.h"
#include "feed/rounds/graph.h"
#include "feed/rounds/pins.h"
#include "feed/settings/settings.h"

namespace tessary::rounds {

using KnownAlarm = KnownPin<snapshot::AlarmPin>;
using KnownMetric = KnownPin<snapshot::MetricPin>;

struct KnownPins {
    std::vector<KnownAlarm> alarms{};
    std::vector<KnownMetric> metrics{};
};

/// The body of an answer, that the profile has to sign in first, or why there is no answer.
using Reply = std::variant<std::string, SignInExpired, aws::Trouble>;
using TakeReply = std::function<void(const Reply&)>;
using Ask = std::function<void(const Question&, TakeReply)>;

/// Has to outlive its questions.
class PinsRound {
public:
    /// What is known of a pin counts while it is of the same alarm or metric. `nowMs` since 1970.
    PinsRound(const settings::Settings& settings, const KnownPins& known, std::int64_t nowMs,
              Ask ask);

    void start();

    /// Some other question showed that these profiles' keys are known: where a pin's are not, its
    /// region is not enabled.
    void trust(const std::set<std::string>& profiles);

    /// Of each pin, with what the round brought so far. What was not asked stays as it was.
    KnownPins known() const;

private:
    struct Refused {
        aws::Trouble trouble{};
        std::string action{};
    };
    template <class Pin>
    struct State {
        KnownPin<Pin> known{};
        bool isAsked{};
        std::optional<std::variant<Refreshed<Pin>, SignInExpired, Refused>> end{};
        std::optional<Refused> withoutPoints{};  ///< refreshed, but for these
    };
    using AlarmState = State<snapshot::AlarmPin>;
    using MetricState = State<snapshot::MetricPin>;
    using Points = std::variant<aws::Samples, SignInExpired, Refused>;
    using TakePoints = std::function<void(const Points&)>;
    struct AlarmsJob;
    struct GraphJob;

    void ask(Question question, const std::string& profile, const std::string& region,
             TakeReply take);
    void askAlarms(AlarmsJob job, const std::optional<std::string>& next);
    void takeAlarms(AlarmsJob job, const Reply& reply);
    void takeAlarm(AlarmState& state, const aws::DescribedAlarm* alarm);
    void takePoints(AlarmState& state, snapshot::AlarmPin pin, const Points& points);
    void askMetric(MetricState& state, const Graph& graph);
    void takeMetric(MetricState& state, const Points& points);
    void askPoints(GraphJob job, const std::optional<std::string>& next);
    void takeStatistics(const GraphJob& job, const std::string& body);
    void takeData(GraphJob job, const std::string& body);

    template <class Pin>
    bool isDue(const KnownPin<Pin>& known, const Graph& graph) const;
    template <class Pin>
    KnownPin<Pin> knownOf(const State<Pin>& state) const;
    template <class Pin>
    PinOutcome<Pin> outcomeOf(const State<Pin>& state) const;

    std::vector<AlarmState> alarms_{};
    std::vector<MetricState> metrics_{};
    std::vector<Graph> graphs_{};  ///< of the metrics
    std::int64_t nowMs_;
    Ask ask_;
    std::set<std::string> taken_{};    ///< profiles whose keys are known
    std::set<std::string> expired_{};  ///< those that have to sign in
};

}  // namespace tessary::rounds
