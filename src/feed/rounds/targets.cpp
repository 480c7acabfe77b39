#include "feed/rounds/targets.h"

#include <algorithm>
#include <limits>

namespace tessary::rounds {

namespace {

constexpr std::int64_t schemaVersion = 1;
constexpr std::size_t mostListed = 50;

/// The newest change first; those that don't tell theirs at the end.
bool comesBefore(const snapshot::Alarm& a, const snapshot::Alarm& b) {
    constexpr auto never = std::numeric_limits<std::int64_t>::min();
    return a.updatedMs.value_or(never) > b.updatedMs.value_or(never);
}

std::vector<snapshot::Alarm> listed(std::vector<snapshot::Alarm> alarms) {
    std::ranges::stable_sort(alarms, comesBefore);
    if (alarms.size() > mostListed) alarms.resize(mostListed);
    return alarms;
}

struct Learner {
    KnownTarget target{};
    std::int64_t nowMs{};

    KnownTarget operator()(const Answered& answer) {
        target.answeredMs = nowMs;
        target.expiredMs.reset();
        target.authExpired = false;
        target.failures = 0;
        target.fault.reset();
        target.firing = static_cast<std::int64_t>(answer.alarms.size());
        target.alarms = listed(answer.alarms);
        return std::move(target);
    }
    KnownTarget operator()(const SignInExpired& expired) {
        target.authExpired = true;
        if (expired.endedMs) target.expiredMs = expired.endedMs;
        target.fault = expired.words;
        return std::move(target);
    }
    KnownTarget operator()(const Failed& failed) {
        target.authExpired = false;
        ++target.failures;
        target.fault = failed.words;
        return std::move(target);
    }
};

/// The age beyond which the alarms widget shows no data as current, and a little more.
std::int64_t staleAge(std::int64_t intervalSeconds) {
    return (std::max<std::int64_t>(3 * intervalSeconds, 120) + 1) * 1000;
}

using Age = std::optional<std::int64_t>;

/// As old as what is known of a target that is asked.
std::int64_t seen(const KnownTarget& target, std::int64_t intervalSeconds) {
    return target.answeredMs.value_or(target.askedMs - staleAge(intervalSeconds));
}

Age oldest(const Age& age, std::int64_t other) { return age ? std::min(*age, other) : other; }

/// When the file was last true; none where nobody can say so.
Age updatedOf(const std::vector<KnownTarget>& targets, std::int64_t intervalSeconds) {
    Age asked, answered, ended;
    for (const KnownTarget& target : targets) {
        if (!target.authExpired) asked = oldest(asked, seen(target, intervalSeconds));
        if (target.answeredMs) answered = oldest(answered, *target.answeredMs);
        if (target.authExpired && target.expiredMs) ended = oldest(ended, *target.expiredMs);
    }
    if (asked) return answered ? asked : std::nullopt;
    return answered ? answered : ended;
}

}  // namespace

KnownTarget learned(KnownTarget target, const Outcome& outcome, std::int64_t nowMs) {
    return std::visit(Learner{std::move(target), nowMs}, outcome);
}

std::optional<snapshot::AlarmsSnapshot> alarmsFile(const std::vector<KnownTarget>& targets,
                                                   std::int64_t intervalSeconds) {
    const auto updated = updatedOf(targets, intervalSeconds);
    if (!updated) return std::nullopt;
    snapshot::AlarmsSnapshot file{.schemaVersion = schemaVersion,
                                  .state = "watching",
                                  .updatedMs = *updated,
                                  .intervalSeconds = intervalSeconds};
    for (const KnownTarget& target : targets) {
        file.firing += target.firing;
        const bool failed = !target.authExpired && target.failures > 0;
        file.targets.push_back(
            {target.profile, target.region, target.firing, target.authExpired, failed});
        file.topAlarms.insert(file.topAlarms.end(), target.alarms.begin(), target.alarms.end());
    }
    file.topAlarms = listed(std::move(file.topAlarms));
    return file;
}

snapshot::AlarmsSnapshot nothingWatched(std::int64_t intervalSeconds, std::int64_t nowMs) {
    return {.schemaVersion = schemaVersion,
            .state = "off",
            .updatedMs = nowMs,
            .intervalSeconds = intervalSeconds};
}

}  // namespace tessary::rounds
