#include "feed/status.h"

#include <algorithm>

#include "platform/foundation/json_writing.h"
#include "platform/foundation/visible_text.h"

namespace tessary::feed {

using rounds::KnownTarget;

namespace {

std::string ago(std::int64_t thenMs, std::int64_t nowMs) {
    constexpr std::int64_t minute = 60, hour = 60 * minute;
    const auto seconds = std::max<std::int64_t>(nowMs - thenMs, 0) / 1000;
    if (seconds < 2 * minute) return std::to_string(seconds) + " s ago";
    if (seconds < 2 * hour) return std::to_string(seconds / minute) + " min ago";
    return std::to_string(seconds / hour) + " h ago";
}

std::string lastSuccess(const KnownTarget& target, std::int64_t nowMs) {
    if (!target.answeredMs) return "never answered";
    return (target.fault ? "last answered " : "answered ") + ago(*target.answeredMs, nowMs);
}

}  // namespace

std::string conditionOf(const KnownTarget& target) {
    return foundation::visible(target.profile) + " · " + foundation::visible(target.region) + ": " +
           (target.fault ? foundation::visible(*target.fault)
                         : std::to_string(target.firing) + " firing");
}

std::string statusText(const store::Memory& memory, std::int64_t nowMs) {
    std::string text;
    for (const KnownTarget& target : memory.targets)
        text += conditionOf(target) + " (" + lastSuccess(target, nowMs) + ")\n";
    if (memory.ignored > 0)
        text += "left out by their names: " + std::to_string(memory.ignored) + "\n";
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

std::string statusJSON(const store::Memory& memory) {
    foundation::JSONWriter json{foundation::JSONWriter::Style::indented};
    const auto write = [&](const KnownTarget& target) {
        json.object([&] {
            json.member("profile", target.profile).member("region", target.region);
            json.member("firing", target.firing).member("authExpired", target.authExpired);
            json.member("failures", target.failures);
            if (target.answeredMs) json.member("lastSuccessMs", *target.answeredMs);
            if (target.fault) json.member("fault", *target.fault);
        });
    };
    json.object([&] {
        json.key("targets").array([&] { std::ranges::for_each(memory.targets, write); });
        json.member("ignored", memory.ignored);
    });
    return json.text() + "\n";
}

}  // namespace tessary::feed
