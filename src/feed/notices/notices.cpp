#include "feed/notices/notices.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <set>
#include <utility>
#include <variant>

#include "platform/foundation/joined.h"
#include "platform/foundation/percent_encoding.h"
#include "platform/foundation/visible_text.h"

namespace tessary::notices {

using foundation::percentEncoded;
using foundation::visible;
using rounds::Answered;
using rounds::Outcome;
using rounds::SignInExpired;
using rounds::Target;

namespace {

constexpr std::int64_t quietMs = 600'000;  // how long an alarm is not told to be in ALARM again
constexpr std::size_t mostSingle = 3;      // notices of a kind in one round
constexpr const char* allAlarms = "tessary://alarms";
constexpr const char* manySignIns = "sign-ins";

// In cells, so that a notice stays one that is read at a glance.
constexpr std::size_t longestName = 100;
constexpr std::size_t longestListed = 40;

std::string matterOf(const Target& target, const std::string& name) {
    return target.profile + '\n' + target.region + '\n' + name;
}

std::string linkTo(const Target& target, const std::string& name) {
    return std::string{allAlarms} + '/' + percentEncoded(name) +
           "?profile=" + percentEncoded(target.profile) +
           "&region=" + percentEncoded(target.region);
}

/// An alarm that has entered ALARM or left it.
struct Change {
    Target target{};
    std::string name{};
    bool hasEntered{};
    std::string reason{};
};

Notice noticeOf(const Change& change) {
    const auto& [target, name, hasEntered, reason] = change;
    std::string body = visible(target.profile) + " · " + visible(target.region);
    if (!reason.empty()) body += '\n' + visible(reason);
    return {
        .matter = matterOf(target, name),
        .title = (hasEntered ? "In ALARM: " : "No longer in ALARM: ") + visible(name, longestName),
        .body = std::move(body),
        .link = linkTo(target, name),
        .isUrgent = hasEntered};
}

struct Expired {
    std::string profile{};
    std::string words{};
};

Notice noticeOf(const Expired& expired) {
    return {.matter = "sign-in\n" + expired.profile,
            .title = "The sign-in to " + visible(expired.profile, longestName) + " has expired",
            .body = visible(expired.words),
            .link = allAlarms};
}

std::string counted(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " alarm" : " alarms");
}

/// The names of those that have entered, or else of those that have left.
Notice burstOf(const std::vector<Change>& changes) {
    const auto total = changes.size();
    const auto entered =
        static_cast<std::size_t>(std::ranges::count(changes, true, &Change::hasEntered));
    std::vector<Change> named;
    std::ranges::copy_if(changes, std::back_inserter(named),
                         [&](const Change& each) { return each.hasEntered == (entered > 0); });
    std::string title = counted(total) + " no longer in ALARM";
    if (entered > 0) title = counted(entered) + " entered ALARM";
    if (entered > 0 && entered < total)
        title += ", " + std::to_string(total - entered) + " left it";
    const auto names = foundation::joined(
        named, ", ", [](const Change& each) { return visible(each.name, longestListed); });
    return {.matter = "alarms",
            .title = std::move(title),
            .body = visible(names),
            .link = allAlarms,
            .isUrgent = entered > 0};
}

Notice burstOf(const std::vector<Expired>& expired) {
    const auto names = foundation::joined(
        expired, ", ", [](const Expired& each) { return visible(each.profile, longestListed); });
    return {.matter = manySignIns,
            .title = std::to_string(expired.size()) + " sign-ins have expired",
            .body = visible(names),
            .link = allAlarms};
}

/// One notice each, or one of all.
template <class Event>
void announce(const std::vector<Event>& events, Telling& telling) {
    if (events.size() <= mostSingle) {
        for (const Event& each : events) telling.notices.push_back(noticeOf(each));
        return;
    }
    for (const Event& each : events) telling.over.push_back(noticeOf(each).matter);
    telling.notices.push_back(burstOf(events));
}

/// By name, and therefore each name once.
std::map<std::string, std::string> reasonsOf(const Answered& answer) {
    std::map<std::string, std::string> reasons;
    for (const auto& alarm : answer.alarms) reasons[alarm.name] = alarm.reason;
    return reasons;
}

std::string matterOf(const Expired& expired) { return noticeOf(expired).matter; }

using Names = std::vector<std::string>;
using Profiles = std::set<std::string>;

/// The profiles of the targets that came out so.
template <class Kind>
Profiles profilesOf(const std::vector<Target>& targets, const std::vector<Outcome>& outcomes) {
    Profiles profiles;
    for (std::size_t at = 0; at < targets.size(); ++at)
        if (std::holds_alternative<Kind>(outcomes[at])) profiles.insert(targets[at].profile);
    return profiles;
}

/// A round, target by target.
class Teller {
public:
    Teller(const std::vector<Said>& before, std::int64_t nowMs) : before_(before), nowMs_(nowMs) {
        for (const Said& said : before) {
            profiles_.insert(said.profile);
            if (said.authExpired) expired_.insert(said.profile);
        }
    }

    void signedIn(const std::string& profile) {
        if (expired_.erase(profile) == 0) return;
        over_.push_back(matterOf(Expired{profile, ""}));
        if (expired_.empty()) over_.emplace_back(manySignIns);
    }

    void hear(const Target& target, const Outcome& outcome) {
        const auto known = std::ranges::find_if(before_, [&](const Said& said) {
            return said.profile == target.profile && said.region == target.region;
        });
        const bool isNew = known == before_.end();
        if (isNew && std::holds_alternative<rounds::Failed>(outcome)) return;
        said_.push_back(isNew ? Said{.profile = target.profile, .region = target.region} : *known);
        if (const auto* answer = std::get_if<Answered>(&outcome)) hear(target, *answer);
        if (const auto* expired = std::get_if<SignInExpired>(&outcome)) hear(target, *expired);
    }

    Telling told() {
        for (Said& said : said_) said.authExpired = expired_.contains(said.profile);
        Telling telling{.over = std::move(over_), .said = std::move(said_)};
        announce(changes_, telling);
        announce(expirations_, telling);
        return telling;
    }

private:
    void hear(const Target& target, const SignInExpired& expired) {
        const bool isNews = expired_.insert(target.profile).second;
        if (isNews && profiles_.contains(target.profile))
            expirations_.push_back({target.profile, expired.words});
    }

    void hear(const Target& target, const Answered& answer) {
        Said& said = said_.back();
        const auto reasons = reasonsOf(answer);
        const bool isFirst = !said.firing;
        const auto before = std::exchange(said.firing, Names{}).value_or(Names{});
        std::erase_if(said.recent, [&](const Recent& recent) { return !isQuiet(recent); });
        for (const auto& [name, reason] : reasons) {
            const bool isNews = !isFirst && !std::ranges::binary_search(before, name);
            if (isNews && isQuiet(said, name)) continue;
            said.firing->push_back(name);
            if (isNews) enter(target, name, reason);
        }
        for (const auto& name : before)
            if (!reasons.contains(name) && !target.leavesOut(name))
                changes_.push_back({target, name, false, ""});
    }

    void enter(const Target& target, const std::string& name, const std::string& reason) {
        said_.back().recent.push_back({name, nowMs_});
        changes_.push_back({target, name, true, reason});
    }

    bool isQuiet(const Recent& recent) const {
        return recent.toldMs <= nowMs_ && nowMs_ - recent.toldMs < quietMs;
    }
    static bool isQuiet(const Said& said, const std::string& name) {
        return std::ranges::find(said.recent, name, &Recent::name) != said.recent.end();
    }

    const std::vector<Said>& before_;
    std::int64_t nowMs_;
    Profiles profiles_{};  ///< that were heard of before
    Profiles expired_{};   ///< that are known to have to sign in
    std::vector<std::string> over_{};
    std::vector<Said> said_{};
    std::vector<Change> changes_{};
    std::vector<Expired> expirations_{};
};

}  // namespace

Telling tell(const std::vector<Said>& before, const std::vector<Target>& targets,
             const std::vector<Outcome>& outcomes, std::int64_t nowMs) {
    Teller teller{before, nowMs};
    const auto expired = profilesOf<SignInExpired>(targets, outcomes);
    for (const auto& profile : profilesOf<Answered>(targets, outcomes))
        if (!expired.contains(profile)) teller.signedIn(profile);
    for (std::size_t at = 0; at < targets.size(); ++at) teller.hear(targets[at], outcomes[at]);
    return teller.told();
}

std::string inMarkup(const std::string& text) {
    std::string escaped;
    for (const char letter : text) {
        if (letter == '&')
            escaped += "&amp;";
        else if (letter == '<')
            escaped += "&lt;";
        else if (letter == '>')
            escaped += "&gt;";
        else
            escaped += letter;
    }
    return escaped;
}

}  // namespace tessary::notices
