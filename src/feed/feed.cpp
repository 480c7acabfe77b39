#include "feed/feed.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>
#include <map>
#include <memory>
#include <poll.h>
#include <set>
#include <utility>

#include "feed/command.h"
#include "feed/questions.h"
#include "feed/signals.h"
#include "feed/status.h"
#include "feed/watched.h"
#include "platform/system/child.h"
#include "platform/system/folders.h"
#include "platform/system/output.h"
#include "platform/system/path_watch.h"

namespace tessary::feed {

namespace fs = std::filesystem;
using foundation::Fault;
using foundation::Result;
using rounds::KnownTarget;
using snapshot::AlarmsSnapshot;
using store::Memory;
using store::Store;

namespace {

enum Status { done = 0, failed = 1, wrongCall = 2 };

void complain(const std::string& line) {
    std::fprintf(stderr, "tessary-widgets-feed: %s\n", line.c_str());
}

int complained(const Fault& fault, Status status) {
    complain(fault.message());
    return status;
}

std::int64_t nowMs() { return std::llround(foundation::wallClock().seconds * 1000); }

/// Nothing is waited for any more once the feed is to end.
double roundSeconds() {
    return EndSignals::came() ? std::numeric_limits<double>::infinity() : aws::steadySeconds();
}

// ---- where everything lies

/// Of the feed's own, in one of the user's folders.
Result<fs::path> ownFile(const std::optional<fs::path>& folder, const char* name) {
    if (!folder) return Fault{"no home is known: HOME has to be an absolute path"};
    return *folder / "tessary-widgets" / name;
}

Result<fs::path> settingsFile(const Command& command) {
    if (command.settings) return *command.settings;
    return ownFile(system::settingsFolder(), "feed.toml");
}

Result<fs::path> memoryFile() { return ownFile(system::stateFolder(), "feed.json"); }

Result<fs::path> containerOf(const Command& command) {
    const snapshot::Source source{.places =
                                      snapshot::Places::given(command.container, command.info)};
    const auto location = source.locate(AlarmsSnapshot::fileName);
    if (location.container) return *location.container;
    return Fault{"no container is known: 'tessary-widgets check' says what is wrong"};
}

struct Paths {
    fs::path settings{};
    bool settingsAreGiven{};
    fs::path memory{};
    fs::path container{};

    fs::path alarms() const { return container / snapshot::pathOf(AlarmsSnapshot::fileName); }
};

Result<Paths> pathsOf(const Command& command) {
    return settingsFile(command).andThen([&](const fs::path& settings) {
        return memoryFile().andThen([&](const fs::path& memory) {
            return containerOf(command).transform([&](const fs::path& container) {
                return Paths{settings, command.settings.has_value(), memory, container};
            });
        });
    });
}

// ---- what is to be done

struct Plan {
    settings::Settings settings{};
    Surroundings surroundings{};
    Watched watched{};
};

Result<settings::Settings> loadSettings(const Paths& paths) {
    const auto text = system::readFile(paths.settings);
    if (text) return settings::parseSettings(*text, paths.settings.string());
    if (text.fault() == system::absent() && !paths.settingsAreGiven) return settings::Settings{};
    return Fault{paths.settings.string() + ": " + text.fault().message()};
}

Result<Plan> loadPlan(const Paths& paths, const aws::KeySources& sources) {
    return loadSettings(paths).andThen([&](settings::Settings settings) {
        auto around = Surroundings::ofProcess(sources);
        return watchedOf(settings, around).transform([&](Watched watched) {
            return Plan{std::move(settings), std::move(around), std::move(watched)};
        });
    });
}

// ---- one round

/// What came of it.
struct Made {
    std::optional<AlarmsSnapshot> file{};
    std::optional<snapshot::AlarmPinsSnapshot> alarmPins{};
    std::optional<snapshot::MetricPinsSnapshot> metricPins{};
    Memory memory{};
    int calls{};
};

KnownTarget knownOf(const Memory& memory, const rounds::Target& target) {
    const auto known = std::ranges::find_if(memory.targets, [&](const KnownTarget& each) {
        return each.profile == target.profile && each.region == target.region;
    });
    if (known != memory.targets.end()) return *known;
    return {.profile = target.profile, .region = target.region, .askedMs = nowMs()};
}

void sayRemedy(rounds::Outcome& outcome, const std::string& remedy) {
    if (auto* const expired = std::get_if<rounds::SignInExpired>(&outcome))
        if (!remedy.empty()) expired->words += "; " + remedy;
}

/// One that says that nothing is watched where one stands that says otherwise.
std::optional<AlarmsSnapshot> offFile(const Paths& paths, std::int64_t interval) {
    const auto off = rounds::nothingWatched(interval, nowMs());
    const auto text = system::readFile(paths.alarms());
    if (!text) return std::nullopt;
    const auto standing = foundation::decodeJSON<AlarmsSnapshot>(*text);
    if (standing && standing->state == off.state) return std::nullopt;
    return off;
}

/// The profiles whose keys were taken somewhere.
std::set<std::string> answered(const std::vector<rounds::Target>& targets,
                               const std::vector<rounds::Outcome>& outcomes) {
    std::set<std::string> profiles;
    for (std::size_t at = 0; at < targets.size(); ++at)
        if (std::holds_alternative<rounds::Answered>(outcomes[at]))
            profiles.insert(targets[at].profile);
    return profiles;
}

/// None where nothing is pinned and no file says otherwise.
template <class Pin>
std::optional<snapshot::PinsSnapshot<Pin>> fileOf(const std::vector<rounds::KnownPin<Pin>>& pins,
                                                  std::int64_t interval, const Paths& paths) {
    using File = snapshot::PinsSnapshot<Pin>;
    std::error_code ignored;
    if (pins.empty() && !fs::exists(paths.container / snapshot::pathOf(File::fileName), ignored))
        return std::nullopt;
    return rounds::pinsFile(pins, interval, nowMs());
}

/// Asks, and keeps the keys and the connections from one round to the next.
class Asker {
public:
    explicit Asker(const aws::KeySources& sources)
        : ring_(sources, foundation::wallClock, system::runChild) {}

    Made round(const Plan& plan, const Paths& paths, const Memory& before) {
        const auto& targets = plan.watched.targets;
        const auto interval = plan.settings.interval;
        Made made;
        for (const auto& target : targets) made.memory.targets.push_back(knownOf(before, target));
        Questions questions{ring_, client_, plan.surroundings, plan.watched};
        rounds::AlarmsRound round{targets, questions.forAlarms()};
        rounds::PinsRound pins{
            plan.settings, {before.alarmPins, before.metricPins}, nowMs(), questions.forPins()};
        round.start();
        pins.start();
        client_.run();
        auto outcomes = round.outcomes();
        for (std::size_t at = 0; at < targets.size(); ++at) {
            sayRemedy(outcomes[at], plan.surroundings.remedyOf(targets[at].profile));
            auto& target = made.memory.targets[at];
            target = rounds::learned(std::move(target), outcomes[at], nowMs());
        }
        made.memory.ignored = round.ignored();
        made.file = targets.empty() ? offFile(paths, interval)
                                    : rounds::alarmsFile(made.memory.targets, interval);
        pins.trust(answered(targets, outcomes));
        auto known = pins.known();
        made.alarmPins = fileOf(known.alarms, interval, paths);
        made.metricPins = fileOf(known.metrics, interval, paths);
        made.memory.alarmPins = std::move(known.alarms);
        made.memory.metricPins = std::move(known.metrics);
        made.calls = questions.count();
        return made;
    }

private:
    aws::KeyRing ring_;
    aws::Client client_{{.clock = roundSeconds}};
};

// ---- what is said

/// Says how things stand, each only when that has changed.
class Notes {
public:
    void tellTargets(const Memory& memory) {
        for (const KnownTarget& target : memory.targets) {
            const char* const state = target.authExpired ? "paused" : target.fault ? "failed" : "";
            tell(target.profile + '\0' + target.region, state, conditionOf(target));
        }
    }
    /// An empty fault is none.
    void tellFault(const std::string& matter, const std::string& fault) {
        tell(matter, fault, fault);
    }

private:
    void tell(const std::string& matter, const std::string& state, const std::string& line) {
        if (std::exchange(states_[matter], state) != state && !line.empty()) complain(line);
    }

    std::map<std::string, std::string> states_{};  ///< by what they are of; empty: as it should be
};

bool isIdle(const Plan& plan) {
    return plan.watched.targets.empty() && plan.settings.alarms.empty() &&
           plan.settings.metrics.empty();
}

std::string whyNothing(const Plan& plan, const Paths& paths) {
    if (!isIdle(plan)) return "nothing is written before a target has answered";
    return "nothing is watched: name a profile under [[watch]] in " + paths.settings.string() +
           ", or set up the AWS tools' own";
}

std::string faultOf(const Result<void>& result) { return result ? "" : result.fault().message(); }

// ---- the ways to run

/// Makes rounds in its store, as long as it has that for itself.
class Feed {
public:
    Feed(Paths paths, Plan plan, Store store, aws::KeySources sources)
        : paths_(std::move(paths)),
          plan_(std::move(plan)),
          store_(std::move(store)),
          sources_(std::move(sources)),
          asker_(sources_),
          memory_(store::remembered(paths_.memory)) {}

    /// Whether some target was asked, and a file written.
    bool round() {
        const auto made = asker_.round(plan_, paths_, memory_);
        if (EndSignals::came()) return false;  // what was cut off tells nothing of the targets
        memory_ = made.memory;
        notes_.tellTargets(memory_);
        notes_.tellFault("watched", isIdle(plan_) ? whyNothing(plan_, paths_) : "");
        const auto written = write(made.file).andThen(
            [&] { return write(made.alarmPins).andThen([&] { return write(made.metricPins); }); });
        notes_.tellFault("file", faultOf(written));
        notes_.tellFault("memory", faultOf(store_.remember(memory_)));
        if (!made.file && made.calls > 0) complainOnce(whyNothing(plan_, paths_));
        return (made.file || made.alarmPins || made.metricPins) && written && made.calls > 0;
    }

    void runUntilEnd(const EndSignals& end) {
        system::PathWatch watch{{paths_.settings, sources_.config, sources_.credentials}};
        reload();  // what has changed since it was read
        constexpr double mostJitter = 0.1;
        double due = aws::steadySeconds() + aws::anyShare() * mostJitter * interval();
        while (!EndSignals::came()) {
            const double now = aws::steadySeconds();
            if (now >= due) {
                due = now + interval();
                round();
            } else if (hasChanged(watch, end, due - now)) {
                due = std::min(due, aws::steadySeconds());
            }
        }
    }

private:
    template <class Snapshot>
    Result<void> write(const std::optional<Snapshot>& file) const {
        return file ? store_.write(*file) : Result<void>{};
    }
    double interval() const { return static_cast<double>(plan_.settings.interval); }

    void complainOnce(const std::string& line) { notes_.tellFault("nothing written", line); }

    /// Waits so many seconds at most; whether something else is to be watched now.
    bool hasChanged(system::PathWatch& watch, const EndSignals& end, double seconds) {
        pollfd events[] = {{end.descriptor(), POLLIN, 0}, {watch.descriptor(), POLLIN, 0}};
        const int count = ::poll(events, std::size(events),
                                 static_cast<int>(std::ceil(std::max(seconds, 0.0) * 1000)));
        return count > 0 && events[1].revents != 0 && watch.takeEvents() && reload();
    }

    /// Wrong settings leave the old ones.
    bool reload() {
        auto plan = loadPlan(paths_, sources_);
        notes_.tellFault("settings", plan ? "" : plan.fault().message());
        if (!plan) return false;
        const auto before = std::exchange(plan_, *std::move(plan));
        return plan_.settings != before.settings || plan_.watched != before.watched;
    }

    Paths paths_;
    Plan plan_;
    Store store_;
    aws::KeySources sources_;
    Asker asker_;
    Memory memory_;
    Notes notes_{};
};

/// What would be written, by the files' names.
std::string shown(const Made& made) {
    foundation::JSONWriter json{foundation::JSONWriter::Style::indented};
    const auto add = [&](const auto& file) {
        if (file) json.member(file->fileName, *file);
    };
    json.object([&] {
        add(made.file);
        add(made.alarmPins);
        add(made.metricPins);
    });
    return json.text() + "\n";
}

int dryRun(const Paths& paths, const Plan& plan, const aws::KeySources& sources) {
    const auto made = Asker{sources}.round(plan, paths, store::remembered(paths.memory));
    Notes{}.tellTargets(made.memory);
    if (!made.file && !made.alarmPins && !made.metricPins)
        return complained({whyNothing(plan, paths)}, failed);
    const auto printed = system::writeStandardOutput(shown(made));
    if (!printed) return complained(printed.fault(), failed);
    return made.calls > 0 ? done : failed;
}

int feed(const Command& command) {
    const auto paths = pathsOf(command);
    if (!paths) return complained(paths.fault(), failed);
    const auto sources = aws::KeySources::ofEnvironment();
    auto plan = loadPlan(*paths, sources);
    if (!plan) return complained(plan.fault(), wrongCall);
    if (command.mode == Command::Mode::dryRun) return dryRun(*paths, *plan, sources);
    auto store = Store::open(paths->container, paths->memory);
    if (!store) return complained(store.fault(), failed);
    Feed feed{*paths, *std::move(plan), *std::move(store), sources};
    if (command.mode == Command::Mode::once) return feed.round() ? done : failed;
    feed.runUntilEnd(EndSignals{});
    return done;
}

int printed(const std::string& text) {
    const auto result = system::writeStandardOutput(text);
    return result ? done : complained(result.fault(), failed);
}

int status(const Command& command) {
    const auto file = memoryFile();
    if (!file) return complained(file.fault(), failed);
    const auto memory = store::remembered(*file);
    if (command.json) return printed(statusJSON(memory));
    if (memory.targets.empty())
        return complained({"nothing is known yet; tessary-widgets-feed --once asks"}, failed);
    return printed(statusText(memory, nowMs()));
}

}  // namespace

int run(const std::vector<std::string>& words) {
    const auto command = parseCall(words);
    if (!command) return complained(command.fault(), wrongCall);
    if (command->mode == Command::Mode::information) return printed(command->information);
    return command->mode == Command::Mode::status ? status(*command) : feed(*command);
}

}  // namespace tessary::feed
