#include "feed/status.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "feed/aws/shell_words.h"
#include "platform/foundation/json_writing.h"
#include "platform/foundation/visible_text.h"

namespace tessary::feed {

using rounds::KnownTarget;

namespace {

constexpr std::size_t longestName = 1000;  // cells; a part of a name helps nobody

std::string ago(std::int64_t thenMs, std::int64_t nowMs) {
    constexpr std::int64_t minute = 60, hour = 60 * minute;
    const auto seconds = std::max<std::int64_t>(nowMs - thenMs, 0) / 1000;
    if (seconds < 2 * minute) return std::to_string(seconds) + " s ago";
    if (seconds < 2 * hour) return std::to_string(seconds / minute) + " min ago";
    return std::to_string(seconds / hour) + " h ago";
}

/// A target or a pin, as status tells of it.
struct Told {
    std::string kind{};  ///< "target", "alarm", "metric"
    std::string profile{};
    std::string region{};
    std::string id{};         ///< of a pin
    std::string condition{};  ///< where nothing is wrong
    bool authExpired{};
    std::int64_t failures{};
    std::optional<std::int64_t> answeredMs{};
    std::optional<std::string> fault{};
    std::string toType{};
};

/// What helps, by a part of what is said of a fault; PROFILE, REGION and ID are put in.
struct Help {
    std::string_view sign{};
    std::string_view type{};
};
constexpr std::array helps{
    Help{"not enabled for this account", "tessary-widgets-feed unwatch PROFILE REGION"},
    Help{"no longer exists", "tessary-widgets-feed unpin ID"},
    Help{"Signature expired", "sudo timedatectl set-ntp true"},
    Help{"not yet current", "sudo timedatectl set-ntp true"},
    Help{"RequestExpired", "sudo timedatectl set-ntp true"},
};

void put(std::string& text, std::string_view place, const std::string& word) {
    if (const auto at = text.find(place); at != text.npos)
        text.replace(at, place.size(), foundation::visible(aws::shellWord(word), longestName));
}

std::string toType(const Told& told, const Surroundings& around) {
    if (told.authExpired) return around.remedyOf(told.profile);
    if (!told.fault) return "";
    for (const auto& [sign, type] : helps) {
        if (told.fault->find(sign) == told.fault->npos) continue;
        std::string text{type};
        put(text, "PROFILE", told.profile);
        put(text, "REGION", told.region);
        put(text, "ID", told.id);
        return text;
    }
    return "";
}

std::string conditionOf(const snapshot::AlarmPin& pin) { return pin.state.value_or("no state"); }
std::string conditionOf(const snapshot::MetricPin& pin) {
    if (!pin.latest) return "no data";
    return foundation::toJSON(pin.latest->v) + (pin.unit ? " " + *pin.unit : "");
}

template <class Pin>
Told toldOf(const std::string& kind, const rounds::KnownPin<Pin>& pin) {
    auto fault = pin.shown.error;
    if (pin.shown.authExpired) fault = "not signed in";
    return {.kind = kind,
            .profile = pin.shown.profile,
            .region = pin.shown.region,
            .id = pin.shown.id,
            .condition = conditionOf(pin.shown),
            .authExpired = pin.shown.authExpired,
            .failures = pin.failures,
            .answeredMs = pin.answeredMs,
            .fault = std::move(fault)};
}

std::vector<Told> pinsOf(const store::Memory& memory, const Surroundings& around) {
    std::vector<Told> all;
    for (const auto& pin : memory.alarmPins) all.push_back(toldOf("alarm", pin));
    for (const auto& pin : memory.metricPins) all.push_back(toldOf("metric", pin));
    for (auto& told : all) told.toType = toType(told, around);
    return all;
}

/// The sign-in's remedy stands in the fault already.
std::string toType(const KnownTarget& target, const Surroundings& around) {
    return toType(Told{.profile = target.profile,
                       .region = target.region,
                       .authExpired = target.authExpired,
                       .fault = target.fault},
                  around);
}

std::string lastSuccess(const std::optional<std::int64_t>& answeredMs, bool isWrong,
                        std::int64_t nowMs) {
    if (!answeredMs) return " (never answered)\n";
    return (isWrong ? " (last answered " : " (answered ") + ago(*answeredMs, nowMs) + ")\n";
}

std::string lineOf(const Told& pin, std::int64_t nowMs) {
    const auto state = pin.fault.value_or(pin.condition);
    const auto type = pin.toType.empty() ? "" : "  type: " + pin.toType + "\n";
    return pin.kind + " " + foundation::visible(pin.id, longestName) + ": " +
           foundation::visible(state) + lastSuccess(pin.answeredMs, pin.fault.has_value(), nowMs) +
           type;
}

}  // namespace

std::string conditionOf(const KnownTarget& target) {
    return foundation::visible(target.profile) + " · " + foundation::visible(target.region) + ": " +
           (target.fault ? foundation::visible(*target.fault)
                         : std::to_string(target.firing) + " firing");
}

std::string statusText(const store::Memory& memory, const Surroundings& around,
                       std::int64_t nowMs) {
    std::string text;
    for (const KnownTarget& target : memory.targets) {
        text +=
            conditionOf(target) + lastSuccess(target.answeredMs, target.fault.has_value(), nowMs);
        const auto type = target.authExpired ? "" : toType(target, around);
        if (!type.empty()) text += "  type: " + type + "\n";
    }
    if (memory.ignored > 0)
        text += "left out by their names: " + std::to_string(memory.ignored) + "\n";
    for (const auto& pin : pinsOf(memory, around)) text += lineOf(pin, nowMs);
    return text;
}

std::string summaryOf(const store::Memory& memory) {
    std::int64_t firing = 0, paused = 0, failed = 0;
    for (const KnownTarget& target : memory.targets) {
        firing += target.firing;
        paused += target.authExpired ? 1 : 0;
        failed += !target.authExpired && target.fault ? 1 : 0;
    }
    const auto count = memory.targets.size();
    return std::to_string(firing) + " firing in " + std::to_string(count) +
           (count == 1 ? " target" : " targets") +
           (paused > 0 ? ", " + std::to_string(paused) + " paused" : "") +
           (failed > 0 ? ", " + std::to_string(failed) + " failed" : "");
}

std::string statusJSON(const store::Memory& memory, const Surroundings& around) {
    foundation::JSONWriter json{foundation::JSONWriter::Style::indented};
    const auto trouble = [&](const auto& each, const std::string& type) {
        json.member("authExpired", each.authExpired).member("failures", each.failures);
        if (each.answeredMs) json.member("lastSuccessMs", *each.answeredMs);
        if (each.fault) json.member("fault", *each.fault);
        if (!type.empty()) json.member("toType", type);
    };
    const auto writeTarget = [&](const KnownTarget& target) {
        json.object([&] {
            json.member("profile", target.profile).member("region", target.region);
            json.member("firing", target.firing);
            trouble(target, toType(target, around));
        });
    };
    const auto writePin = [&](const Told& pin) {
        json.object([&] {
            json.member("kind", pin.kind).member("id", pin.id);
            json.member("profile", pin.profile).member("region", pin.region);
            json.member("condition", pin.condition);
            trouble(pin, pin.toType);
        });
    };
    json.object([&] {
        json.key("targets").array([&] { std::ranges::for_each(memory.targets, writeTarget); });
        json.member("ignored", memory.ignored);
        json.key("pins").array([&] { std::ranges::for_each(pinsOf(memory, around), writePin); });
    });
    return json.text() + "\n";
}

}  // namespace tessary::feed
