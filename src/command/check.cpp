#include "command/check.h"

#include <algorithm>
#include <cerrno>
#include <functional>
#include <iomanip>
#include <pwd.h>
#include <sstream>
#include <sys/stat.h>
#include <system_error>
#include <tuple>
#include <unordered_map>
#include <unordered_set>

#include "alarms/alarms_display.h"
#include "command/notes.h"
#include "pins/pin_display.h"
#include "platform/foundation/visible_text.h"
#include "platform/locale/text_equality.h"
#include "snapshot/freshness.h"

namespace tessary::command {

using foundation::visible;

namespace fs = std::filesystem;
using snapshot::AlarmsSnapshot;
using snapshot::AppGroup;
using snapshot::Reading;

namespace {

std::int64_t countOf(std::size_t size) { return static_cast<std::int64_t>(size); }

std::string groupProblem(const AppGroup& group) {
    const std::string value = '"' + visible(group.value.value_or("")) + '"';
    switch (group.rule) {
        case AppGroup::Rule::identifier: return "";
        case AppGroup::Rule::missing:
            return "the information dictionary holds no text under TessaryAppGroup";
        case AppGroup::Rule::beginsWithDot:
            return value + " begins with a dot: a build variable before it was empty";
        case AppGroup::Rule::beginsWithDollar:
            return value + " begins with a dollar sign: a build variable was never expanded";
    }
    return "";
}

std::string containerProblem(const AppGroup& group) {
    return "no folder for the group \"" + visible(group.value.value_or("")) +
           "\": it has to be the name of one folder, and XDG_DATA_HOME or HOME an absolute path";
}

/// Why a path leads to nothing, where that is not its last part's fault; empty otherwise.
std::string brokenAt(const fs::path& file) {
    std::error_code ignored;
    fs::path at;
    for (const fs::path& part : file) {
        at /= part;
        if (fs::exists(fs::status(at, ignored))) continue;
        const fs::file_type type = fs::symlink_status(at, ignored).type();
        if (type == fs::file_type::symlink)
            return "the link " + visible(at.native()) + " leads nowhere";
        const bool isFolder = type == fs::file_type::not_found && at != file;
        return isFolder ? "there is no folder " + visible(at.native()) : "";
    }
    return "";
}

/// What stands in a file's place; empty for a file and for nothing.
std::string standIn(const fs::path& file) {
    std::error_code ignored;
    switch (fs::status(file, ignored).type()) {
        case fs::file_type::directory: return "a folder stands there";
        case fs::file_type::fifo: return "a FIFO stands there";
        case fs::file_type::socket: return "a socket stands there";
        case fs::file_type::block:
        case fs::file_type::character: return "a device stands there";
        default: return "";
    }
}

/// The folder on the way to a file that may not be entered, else the file.
fs::path refusing(const fs::path& file) {
    std::error_code fault;
    fs::path at;
    for (const fs::path& part : file) {
        const bool isUnknown = fs::status(at / part, fault).type() == fs::file_type::none;
        if (isUnknown && fault == std::errc::permission_denied) return at.empty() ? "." : at;
        at /= part;
    }
    return file;
}

/// Whose mode keeps a file from being read, where one does.
std::string deniedBy(const fs::path& file, const foundation::Fault& fault) {
    if (fault.message() != std::system_category().message(EACCES)) return "";
    struct stat status {};
    const fs::path place = refusing(file);
    if (::stat(place.c_str(), &status) != 0) return "";
    const passwd* owner = ::getpwuid(status.st_uid);
    std::ostringstream mode;
    mode << std::oct << std::setfill('0') << std::setw(4) << (status.st_mode & 07777U);
    return visible(place.native()) + " belongs to " +
           (owner != nullptr ? owner->pw_name : std::to_string(status.st_uid)) + " and has mode " +
           mode.str();
}

/// Whether the container is given as its folder for the widgets.
std::string mistakenContainer(const fs::path& file) {
    const fs::path folder = file.parent_path();
    std::error_code ignored;
    const bool isMistaken = folder.parent_path().filename() == "widgets" &&
                            fs::status(folder, ignored).type() == fs::file_type::not_found;
    return isMistaken ? "; a container is the folder that holds widgets/, not widgets/ itself" : "";
}

std::string fileProblem(const fs::path& file, const foundation::Fault& fault) {
    const std::string cause =
        standIn(file) + brokenAt(file) + deniedBy(file, fault) + mistakenContainer(file);
    return fault.message() + (cause.empty() ? "" : ": " + cause);
}

void noteStatus(FileFinding& finding, const fs::path& file) {
    struct stat status {};
    if (::stat(file.c_str(), &status) != 0) return;
    constexpr double nano = 1e-9;
    finding.modified = Date{static_cast<double>(status.st_mtim.tv_sec) +
                            static_cast<double>(status.st_mtim.tv_nsec) * nano};
}

/// The step at which the walk ended, and the problem there.
template <class Snapshot>
std::pair<Step, std::optional<std::string>> outcome(const Reading<Snapshot>& reading) {
    const snapshot::Location& location = reading.location;
    if (location.group.rule != AppGroup::Rule::identifier)
        return {Step::group, groupProblem(location.group)};
    if (!location.container) return {Step::container, containerProblem(location.group)};
    if (const auto* fault = reading.fileFault())
        return {Step::file, fileProblem(location.file, *fault)};
    if (const auto* fault = reading.decodingFault()) return {Step::content, fault->message()};
    if (!isSupported(*reading.snapshot()))
        return {Step::schema,
                "schemaVersion is " + std::to_string(reading.snapshot()->schemaVersion) +
                    ", and only versions up to " +
                    std::to_string(snapshot::supportedSchemaVersion) + " are understood"};
    return {Step::usable, std::nullopt};
}

/// What is the same for all kinds of files.
template <class Snapshot>
FileFinding walked(const Reading<Snapshot>& reading, std::string widget, Date now) {
    FileFinding finding{.name = std::string{Snapshot::fileName} + ".json",
                        .widget = std::move(widget)};
    std::tie(finding.step, finding.problem) = outcome(reading);
    if (!reading.location.container) return finding;
    finding.path = reading.location.file.string();
    noteStatus(finding, reading.location.file);
    if (const std::string* bytes = reading.bytes()) {
        finding.size = countOf(bytes->size());
        finding.digest = std::hash<std::string>{}(*bytes);
        if (const auto* fault = reading.decodingFault())
            finding.fault = {*fault, excerptAt(*bytes, fault->offset)};
    }
    if (const Snapshot* snapshot = reading.snapshot()) {
        finding.schemaVersion = snapshot->schemaVersion;
        finding.updated = Date::fromMilliseconds(snapshot->updatedMs);
        finding.intervalSeconds = snapshot->intervalSeconds;
    }
    finding.notes = notesOn(reading, now);
    return finding;
}

/// The snapshot as a display state takes it.
template <class Snapshot>
std::optional<Snapshot> usable(const Reading<Snapshot>& reading) {
    const Snapshot* snapshot = reading.snapshot();
    return snapshot && isSupported(*snapshot) ? std::optional{*snapshot} : std::nullopt;
}

/// `names` are what a person is told of the identifiers.
std::vector<Repeat> repeats(const std::vector<std::string>& identifiers,
                            const std::vector<std::string>& names) {
    std::vector<Repeat> all;
    std::unordered_map<std::string, std::size_t> places;
    for (std::size_t index = 0; index < identifiers.size(); ++index) {
        const auto [place, isFirst] =
            places.try_emplace(locale::canonicalForm(identifiers[index]), all.size());
        if (isFirst) all.push_back({names[index], 0});
        ++all[place->second].times;
    }
    std::erase_if(all, [](const Repeat& each) { return each.times == 1; });
    return all;
}

constexpr const char* noFile = "there is no usable file";

Shown shownOf(const std::optional<AlarmsSnapshot>& snapshot, Date now) {
    const alarms::AlarmsDisplay display{snapshot, now};
    if (!snapshot) return {.display = "unavailable", .why = noFile};
    const auto* watching = display.watching();
    if (!watching)
        return {.display = "notWatching",
                .why = "state is \"" + visible(snapshot->state, 40) + "\" and not \"watching\""};
    Shown shown{.display = "watching", .stale = watching->stale};
    shown.staleAfter = watching->updated +
                       snapshot::staleLimit(snapshot->intervalSeconds, alarms::leastStaleLimit);
    for (const snapshot::Target& target : snapshot->targets)
        if (target.authExpired) shown.paused.push_back(target);
    return shown;
}

FileFinding inspectAlarms(const snapshot::Source& source, Date now) {
    const auto reading = snapshot::readSnapshot<AlarmsSnapshot>(source);
    FileFinding finding = walked(reading, "alarms", now);
    finding.shows = shownOf(usable(reading), now);
    const AlarmsSnapshot* snapshot = reading.snapshot();
    if (!snapshot) return finding;

    finding.counts = Counts{.firing = snapshot->firing,
                            .targets = countOf(snapshot->targets.size()),
                            .topAlarms = countOf(snapshot->topAlarms.size())};
    std::vector<std::string> identities;
    std::vector<std::string> names;
    for (const snapshot::Alarm& alarm : snapshot->topAlarms) {
        identities.push_back(alarm.identity());
        names.push_back(alarm.profile + " · " + alarm.region + " · " + alarm.name);
    }
    finding.repeated = repeats(identities, names);
    return finding;
}

template <class Pin>
PinCondition conditionOf(const Pin& pin, bool stale) {
    if (pin.authExpired) return PinCondition::authExpired;
    if (pin.error) return PinCondition::error;
    return stale ? PinCondition::stale : PinCondition::fresh;
}

template <class Snapshot>
Shown shownOf(const std::optional<Snapshot>& snapshot, const std::vector<std::string>& ids,
              Date now) {
    const auto first = ids.empty() ? std::nullopt : std::optional{ids.front()};
    const auto display = pins::PinDisplay<Snapshot>::resolve(snapshot, first, now);
    const auto* pinned = display.pinned();
    if (!pinned) return {.display = "notPinned", .why = snapshot ? "nothing is pinned" : noFile};
    Shown shown{.display = "pinned", .stale = pinned->stale};
    shown.staleAfter =
        pinned->updated + snapshot::staleLimit(snapshot->intervalSeconds, pins::leastStaleLimit);
    std::unordered_set<std::string> seen;
    for (const auto& pin : snapshot->pins) {
        const bool isFirst = seen.insert(locale::canonicalForm(pin.id)).second;
        shown.pins.push_back(
            {pin.id, pin.label, pin.profile, conditionOf(pin, shown.stale), pin.error, !isFirst});
    }
    return shown;
}

template <class Snapshot>
FileFinding inspectPins(const snapshot::Source& source, const std::string& widget, Date now) {
    const auto reading = snapshot::readSnapshot<Snapshot>(source);
    FileFinding finding = walked(reading, widget, now);
    std::vector<std::string> ids;
    if (const Snapshot* snapshot = reading.snapshot()) {
        std::size_t points = 0;
        for (const auto& pin : snapshot->pins) {
            ids.push_back(pin.id);
            points += pin.points.size();
        }
        finding.counts = Counts{.pins = countOf(ids.size()), .points = countOf(points)};
        finding.repeated = repeats(ids, ids);
    }
    finding.shows = shownOf(usable(reading), ids, now);
    return finding;
}

void leaveOutTimes(Inspection& inspection) {
    inspection.now = {};
    for (FileFinding& file : inspection.files) file.modified.reset();
}

}  // namespace

Inspection inspect(const snapshot::Source& source) {
    Inspection result{.now = source.clock(), .groupAssumed = source.places.dictionaries.empty()};
    snapshot::Location location = source.locate(AlarmsSnapshot::fileName);
    result.group = std::move(location.group);
    if (location.container) result.container = location.container->string();
    result.files.push_back(inspectAlarms(source, result.now));
    result.files.push_back(inspectPins<snapshot::AlarmPinsSnapshot>(source, "alarm", result.now));
    result.files.push_back(inspectPins<snapshot::MetricPinsSnapshot>(source, "metric", result.now));
    result.usable = std::all_of(result.files.begin(), result.files.end(),
                                [](const FileFinding& file) { return file.step == Step::usable; });
    return result;
}

bool foundTheSame(Inspection one, Inspection other) {
    leaveOutTimes(one);
    leaveOutTimes(other);
    return one == other;
}

}  // namespace tessary::command
