#include "feed/feed.h"

#include <sys/stat.h>
#include <utility>
#include <variant>

#include "feed/asker.h"
#include "feed/command.h"
#include "feed/notes.h"
#include "feed/open.h"
#include "feed/pinning.h"
#include "feed/plan.h"
#include "feed/running.h"
#include "feed/searching.h"
#include "feed/signals.h"
#include "feed/status.h"
#include "feed/store/store.h"
#include "feed/watching.h"
#include "platform/foundation/json_writing.h"

namespace tessary::feed {

namespace {

/// What would be written, by the files' names.
std::string shown(const Made& made) {
    foundation::JSONWriter json{foundation::JSONWriter::Style::indented};
    const auto add = [&](const auto& file) {
        if (file) json.member(file->fileName, *file);
    };
    json.object([&] {
        add(made.alarms);
        add(made.alarmPins);
        add(made.metricPins);
    });
    return json.text() + "\n";
}

int dryRun(const Paths& paths, const Plan& plan, const aws::KeySources& sources,
           const aws::Patience& patience) {
    const auto made = Asker{sources, patience}.round(plan, paths, store::remembered(paths.memory));
    Notes{}.tellTargets(made.memory);
    if (!made.hasFiles()) return complained({whyNothing(plan, paths)}, failed);
    const int status = printed(shown(made));
    return made.isAsked ? status : failed;
}

int perform(const Information& information) { return printed(information.text); }

int perform(const RoundsCall& call) {
    const auto paths = Paths::find(call.given);
    if (!paths) return complained(paths.fault(), failed);
    const auto sources = aws::KeySources::ofEnvironment();
    auto plan = loadPlan(*paths, sources);
    if (!plan) return complained(plan.fault(), wrongCall);
    if (call.mode == RoundsCall::Mode::dryRun) return dryRun(*paths, *plan, sources, call.patience);
    auto store = store::Store::open(paths->container, paths->memory);
    if (!store) return complained(store.fault(), failed);
    Feed feed{*paths, *std::move(plan), *std::move(store), sources, call.patience};
    if (call.mode == RoundsCall::Mode::once) return feed.round() ? done : failed;
    feed.runUntilEnd(EndSignals{});
    return done;
}

int perform(const StatusCall& call) {
    const auto file = memoryFile();
    if (!file) return complained(file.fault(), failed);
    const auto memory = store::remembered(*file);
    const auto around = Surroundings::ofProcess(aws::KeySources::ofEnvironment());
    if (call.json) return printed(statusJSON(memory, around));
    if (memory.targets.empty() && memory.alarmPins.empty() && memory.metricPins.empty())
        return complained({"nothing is known yet; tessary-widgets-feed watch adds a profile"},
                          failed);
    return printed(statusText(memory, around, nowMs()));
}

int perform(const OpenCall& call) { return openLink(call.url); }
int perform(const WatchCall& call) { return watch(call); }
int perform(const UnwatchCall& call) { return unwatch(call); }
int perform(const AlarmsCall& call) { return list(call); }
int perform(const MetricsCall& call) { return list(call); }
int perform(const PinCall& call) { return pin(call); }
int perform(const UnpinCall& call) { return unpin(call); }

}  // namespace

int run(const std::vector<std::string>& words, const aws::Patience& patience) {
    auto call = parseCall(words);
    if (!call) return complained(call.fault(), wrongCall);
    if (auto* const rounds = std::get_if<RoundsCall>(&*call)) rounds->patience = patience;
    // A browser keeps the user's own mask.
    if (!std::holds_alternative<OpenCall>(*call)) ::umask(S_IRWXG | S_IRWXO);
    return std::visit([](const auto& each) { return perform(each); }, *call);
}

}  // namespace tessary::feed
