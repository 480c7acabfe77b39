#include "feed/rounds/pins_round.h"

#include <algorithm>
#include <map>
#include <utility>

#include "feed/rounds/window.h"
#include "platform/foundation/json_writing.h"

namespace tessary::rounds {

namespace {

using Kind = aws::Trouble::Kind;

constexpr std::size_t mostNames = 100;  // of a call
constexpr int mostParts = 20;           // of an answer; whoever has more goes on for ever

aws::Trouble unclear() { return {Kind::passing, "The answer cannot be read"}; }
aws::Trouble endless() { return {Kind::lasting, "The answer has no end"}; }

/// Words that no two subjects share, whatever their names hold.
std::string subjectOf(const Question& place, const std::vector<std::string>& names) {
    std::string subject;
    for (const auto* word : {&place.profile, &place.region}) subject += *word + '\0';
    for (const auto& name : names) subject += name + '\0';
    return subject;
}

std::string subjectOf(const settings::AlarmPin& pin) {
    return subjectOf({.profile = pin.profile, .region = pin.region}, {pin.name});
}

std::string subjectOf(const settings::MetricPin& pin) {
    std::vector<std::string> names{pin.namespace_, pin.name, pin.statistic,
                                   std::to_string(pin.period)};
    for (const auto& [name, value] : pin.dimensions) names.insert(names.end(), {name, value});
    return subjectOf({.profile = pin.profile, .region = pin.region}, names);
}

snapshot::AlarmPin unknown(const settings::AlarmPin& pin) {
    return {.id = pin.id,
            .label = pin.label,
            .profile = pin.profile,
            .region = pin.region,
            .alarmName = pin.name};
}

snapshot::MetricPin unknown(const settings::MetricPin& pin) {
    return {.id = pin.id,
            .label = pin.label,
            .profile = pin.profile,
            .region = pin.region,
            .namespace_ = pin.namespace_,
            .metricName = pin.name,
            .stat = pin.statistic,
            .periodSeconds = pin.period};
}

template <class Pin, class Pinned>
KnownPin<Pin> knownOf(const Pinned& pin, const std::vector<KnownPin<Pin>>& all) {
    const auto isIt = [&](const KnownPin<Pin>& known) {
        return known.shown.id == pin.id && known.subject == subjectOf(pin);
    };
    const auto found = std::ranges::find_if(all, isIt);
    if (found == all.end()) return {.shown = unknown(pin), .subject = subjectOf(pin)};
    auto known = *found;
    known.shown.label = pin.label;
    return known;
}

/// What an alarm tells of itself.
snapshot::AlarmPin shownOf(snapshot::AlarmPin pin, const aws::DescribedAlarm& alarm) {
    pin = {.id = pin.id,
           .label = pin.label,
           .profile = pin.profile,
           .region = pin.region,
           .alarmName = pin.alarmName,
           .state = alarm.state,
           .reason = alarm.reason,
           .stateUpdatedMs = alarm.since(),
           .threshold = aws::finite(alarm.threshold),
           .comparison = alarm.comparison};
    return pin;
}

template <class Pin>
void putPoints(Pin& pin, const aws::Samples& samples, const std::optional<std::string>& unit) {
    pin.unit = unit ? unit : samples.unit;
    pin.points = samples.points;
    pin.latest.reset();
    if (!pin.points.empty()) pin.latest = pin.points.back();
}

bool isLasting(Kind kind) { return kind != Kind::passing; }

/// Nothing that happens here would change the answer.
bool isFinal(Kind kind) { return kind == Kind::mayNot || kind == Kind::lasting; }

/// The parts of an answer of GetMetricData that says why it has no points.
std::optional<aws::Trouble> troubleOf(const std::vector<aws::DataResult>& results) {
    for (const auto& result : results) {
        if (result.status == "Forbidden") return aws::Trouble{Kind::mayNot, "Forbidden"};
        if (result.status == "InternalError") return aws::Trouble{Kind::passing, "InternalError"};
    }
    return std::nullopt;
}

bool goesOn(const std::optional<std::string>& next) { return next && !next->empty(); }

}  // namespace

/// Alarms of a target that are being asked for, page after page.
struct PinsRound::AlarmsJob {
    std::vector<AlarmState*> states{};
    std::vector<aws::DescribedAlarm> found{};
    int pages{};
};

/// The same of points.
struct PinsRound::GraphJob {
    Graph graph;
    std::string profile{};
    std::string region{};
    TakePoints take{};
    std::vector<aws::DataResult> results{};
    int parts{};
};

PinsRound::PinsRound(const settings::Settings& settings, const KnownPins& known, std::int64_t nowMs,
                     Ask ask)
    : nowMs_(nowMs), ask_(std::move(ask)) {
    for (const auto& pin : settings.alarms)
        alarms_.push_back({.known = rounds::knownOf(pin, known.alarms)});
    for (const auto& pin : settings.metrics) {
        metrics_.push_back({.known = rounds::knownOf(pin, known.metrics)});
        graphs_.push_back(graphOf(pin));
    }
}

void PinsRound::start() {
    std::map<std::pair<std::string, std::string>, AlarmsJob> targets;
    for (AlarmState& state : alarms_) {
        state.isAsked = true;
        auto& job = targets[{state.known.shown.profile, state.known.shown.region}];
        job.states.push_back(&state);
        if (job.states.size() == mostNames) askAlarms(std::exchange(job, {}), {});
    }
    for (const auto& [target, job] : targets)
        if (!job.states.empty()) askAlarms(job, {});
    for (std::size_t i = 0; i < metrics_.size(); ++i)
        if (isDue(metrics_[i].known, graphs_[i])) askMetric(metrics_[i], graphs_[i]);
}

void PinsRound::trust(const std::set<std::string>& profiles) {
    taken_.insert(profiles.begin(), profiles.end());
}

void PinsRound::ask(Question question, const std::string& profile, const std::string& region,
                    TakeReply take) {
    question.profile = profile;
    question.region = region;
    ask_(question, [this, profile, take = std::move(take)](const Reply& reply) {
        if (std::holds_alternative<std::string>(reply)) taken_.insert(profile);
        const auto* trouble = std::get_if<aws::Trouble>(&reply);
        const bool isOld = trouble && trouble->kind == Kind::tokenExpired;
        if (isOld || std::holds_alternative<SignInExpired>(reply)) expired_.insert(profile);
        take(isOld ? SignInExpired{.words = trouble->words} : reply);
    });
}

void PinsRound::askAlarms(AlarmsJob job, const std::optional<std::string>& next) {
    std::set<std::string> names;
    for (const AlarmState* state : job.states) names.insert(state->known.shown.alarmName);
    const aws::AlarmsQuery query{.names = std::vector(names.begin(), names.end()), .next = next};
    const auto& pin = job.states.front()->known.shown;
    ask({.action = "DescribeAlarms", .body = foundation::toJSON(query)}, pin.profile, pin.region,
        [this, job = std::move(job)](const Reply& reply) { takeAlarms(job, reply); });
}

void PinsRound::takeAlarms(AlarmsJob job, const Reply& reply) {
    const auto end = [&](const auto& how) {
        for (AlarmState* state : job.states) state->end = how;
    };
    const auto refuse = [&](const aws::Trouble& trouble) {
        end(Refused{trouble, "DescribeAlarms"});
    };
    if (const auto* expired = std::get_if<SignInExpired>(&reply)) return end(*expired);
    if (const auto* trouble = std::get_if<aws::Trouble>(&reply)) return refuse(*trouble);
    const auto page = foundation::decodeJSON<aws::AlarmsPage>(std::get<std::string>(reply));
    if (!page) return refuse(unclear());
    for (const auto& alarms : {page->metricAlarms, page->compositeAlarms})
        if (alarms) job.found.insert(job.found.end(), alarms->begin(), alarms->end());
    if (goesOn(page->next) && ++job.pages == mostParts) return refuse(endless());
    if (goesOn(page->next)) return askAlarms(std::move(job), page->next);
    for (AlarmState* state : job.states) {
        const auto& name = state->known.shown.alarmName;
        const auto alarm = std::ranges::find(job.found, name, &aws::DescribedAlarm::name);
        takeAlarm(*state, alarm == job.found.end() ? nullptr : &*alarm);
    }
}

void PinsRound::takeAlarm(AlarmState& state, const aws::DescribedAlarm* alarm) {
    if (!alarm) {
        state.end = Refused{{Kind::lasting, "This alarm no longer exists"}, "DescribeAlarms"};
        return;
    }
    const auto& old = state.known.shown;
    auto pin = shownOf(old, *alarm);
    state.end = Refreshed<snapshot::AlarmPin>{pin};
    const auto graph = graphOf(*alarm);
    if (!graph) return;
    pin.metricName = graph->metricName();
    pin.periodSeconds = graph->period();
    pin.unit = graph->unit();
    const bool isSame = old.metricName == pin.metricName && old.periodSeconds == pin.periodSeconds;
    if (isSame) putPoints(pin, {old.points, old.unit}, pin.unit);
    if (isSame && !isDue(state.known, *graph)) {
        pin.error = state.known.seriesFault;
        state.end = Refreshed<snapshot::AlarmPin>{std::move(pin)};
        return;
    }
    takePoints(state, pin, Refused{{Kind::passing, "no answer"}, ""});
    askPoints({*graph, pin.profile, pin.region,
               [this, &state, pin](const Points& points) { takePoints(state, pin, points); }},
              {});
}

/// The state that an alarm has told is shown, whatever becomes of its points.
void PinsRound::takePoints(AlarmState& state, snapshot::AlarmPin pin, const Points& points) {
    state.withoutPoints.reset();
    if (const auto* expired = std::get_if<SignInExpired>(&points)) {
        state.end = *expired;
        return;
    }
    if (const auto* refused = std::get_if<Refused>(&points)) {
        state.withoutPoints = *refused;
    } else {
        putPoints(pin, std::get<aws::Samples>(points), pin.unit);
        state.known.seriesMs = nowMs_;
        state.known.seriesFailures = 0;
        state.known.seriesFault.reset();
    }
    state.end = Refreshed<snapshot::AlarmPin>{std::move(pin)};
}

void PinsRound::askMetric(MetricState& state, const Graph& graph) {
    state.isAsked = true;
    askPoints({graph, state.known.shown.profile, state.known.shown.region,
               [this, &state](const Points& points) { takeMetric(state, points); }},
              {});
}

void PinsRound::takeMetric(MetricState& state, const Points& points) {
    if (const auto* expired = std::get_if<SignInExpired>(&points)) {
        state.end = *expired;
        return;
    }
    if (const auto* refused = std::get_if<Refused>(&points)) {
        if (isFinal(refused->trouble.kind)) state.known.seriesMs = nowMs_;
        state.end = *refused;
        return;
    }
    auto pin = state.known.shown;
    putPoints(pin, std::get<aws::Samples>(points), std::nullopt);
    pin.error.reset();
    pin.authExpired = false;
    state.known.seriesMs = nowMs_;
    state.end = Refreshed<snapshot::MetricPin>{std::move(pin)};
}

void PinsRound::askPoints(GraphJob job, const std::optional<std::string>& next) {
    const auto question = job.graph.question(nowMs_ / 1000, next);
    const auto profile = job.profile, region = job.region;
    ask(question, profile, region, [this, job = std::move(job)](const Reply& reply) {
        const std::string action = job.graph.isFree() ? "GetMetricStatistics" : "GetMetricData";
        if (const auto* expired = std::get_if<SignInExpired>(&reply)) return job.take(*expired);
        if (const auto* trouble = std::get_if<aws::Trouble>(&reply))
            return job.take(Refused{*trouble, action});
        const auto& body = std::get<std::string>(reply);
        return job.graph.isFree() ? takeStatistics(job, body) : takeData(job, body);
    });
}

void PinsRound::takeStatistics(const GraphJob& job, const std::string& body) {
    const auto answer = foundation::decodeJSON<aws::StatisticsAnswer>(body);
    if (!answer) return job.take(Refused{unclear(), "GetMetricStatistics"});
    job.take(aws::samplesOf(*answer, job.graph.series().statistic));
}

void PinsRound::takeData(GraphJob job, const std::string& body) {
    const auto refuse = [&](const aws::Trouble& trouble) {
        job.take(Refused{trouble, "GetMetricData"});
    };
    const auto answer = foundation::decodeJSON<aws::DataAnswer>(body);
    if (!answer) return refuse(unclear());
    if (answer->results)
        job.results.insert(job.results.end(), answer->results->begin(), answer->results->end());
    if (const auto trouble = troubleOf(job.results)) return refuse(*trouble);
    if (!goesOn(answer->next)) return job.take(aws::samplesOf(job.results, job.graph.shown().id));
    if (++job.parts == mostParts) return refuse(endless());
    askPoints(std::move(job), answer->next);
}

/// A round that comes a moment early must not wait for the one after it; a clock that was put back
/// does not hold anything up.
template <class Pin>
bool PinsRound::isDue(const KnownPin<Pin>& known, const Graph& graph) const {
    if (!known.seriesMs || known.shown.authExpired) return true;
    constexpr std::int64_t moment = 1000;
    const auto pause = pauseOf(graph.series()) * 1000;
    return nowMs_ < *known.seriesMs || nowMs_ - *known.seriesMs >= pause - moment;
}

template <class Pin>
PinOutcome<Pin> PinsRound::outcomeOf(const State<Pin>& state) const {
    if (!state.end) return Unanswered{"no answer"};
    if (const auto* fresh = std::get_if<Refreshed<Pin>>(&*state.end)) return *fresh;
    if (const auto* expired = std::get_if<SignInExpired>(&*state.end)) return *expired;
    const auto& refused = std::get<Refused>(*state.end);
    const auto& [kind, words] = refused.trouble;
    const bool isUnknown = kind == Kind::unknownKeys && !taken_.contains(state.known.shown.profile);
    if (isUnknown) return SignInExpired{.words = words};
    return Unanswered{toldOf(refused.trouble, refused.action, state.known.shown.region),
                      isLasting(kind)};
}

template <class Pin>
KnownPin<Pin> PinsRound::knownOf(const State<Pin>& state) const {
    if (!state.isAsked) {
        const bool isPaused = expired_.contains(state.known.shown.profile);
        return isPaused ? learned<Pin>(state.known, SignInExpired{}, nowMs_) : state.known;
    }
    auto known = learned(state.known, outcomeOf(state), nowMs_);
    if (!state.withoutPoints) return known;
    const auto& [trouble, action] = *state.withoutPoints;
    const Kind kind = trouble.kind;
    ++known.seriesFailures;
    if (isLasting(kind) || known.seriesFailures > 1 || !state.known.isSeen)
        known.seriesFault = toldOf(trouble, action, known.shown.region);
    known.shown.error = known.seriesFault;
    if (isFinal(kind)) known.seriesMs = nowMs_;
    return known;
}

KnownPins PinsRound::known() const {
    KnownPins known;
    for (const auto& state : alarms_) known.alarms.push_back(knownOf(state));
    for (const auto& state : metrics_) known.metrics.push_back(knownOf(state));
    return known;
}

}  // namespace tessary::rounds
