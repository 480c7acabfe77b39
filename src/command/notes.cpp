#include "command/notes.h"

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <unordered_map>

#include "platform/foundation/nearest.h"
#include "platform/foundation/visible_text.h"

namespace tessary::command {

using foundation::Date;
using foundation::visible;
using snapshot::AlarmsSnapshot;

namespace {

/// Each is told where it is met first, and how often.
class Notes {
public:
    void add(const std::string& place, const std::string& note) {
        const bool isNew = !places_.contains(note);
        if (isNew && all_.size() == most) return void(++left_);
        const auto at = places_.try_emplace(note, all_.size()).first;
        if (isNew) all_.push_back({place + note, 0});
        ++all_[at->second].times;
    }
    std::vector<std::string> take() const {
        std::vector<std::string> lines;
        for (const auto& [text, times] : all_)
            lines.push_back(text + (times == 1 ? "" : " (" + std::to_string(times) + " times)"));
        if (left_ > 0) lines.push_back(std::to_string(left_) + " further ones");
        return lines;
    }

private:
    static constexpr std::size_t most = 300;
    struct Note {
        std::string text{};
        std::size_t times{};
    };
    std::vector<Note> all_{};
    std::unordered_map<std::string, std::size_t> places_{};
    std::size_t left_{};
};

/// From the whole file to a value, the last step first: the member that it is, or the element.
struct Way {
    const Way* before{};
    std::string_view key{};
    std::size_t index{};

    /// "pins/0/unit"
    std::string path() const {
        const std::string own = key.empty() ? std::to_string(index) : std::string{key};
        return before != nullptr ? before->path() + "/" + own : own;
    }
};

/// Shows every number and text of a record, with its way, as the field tables list them.
template <class Value, class Visit>
void walk(const Value& value, const Way* way, const Visit& visit) {
    if constexpr (foundation::TableRecord<Value>) {
        std::apply(
            [&](const auto&... field) {
                const auto enter = [&](const auto& each) {
                    const Way step{way, each.key};
                    walk(value.*each.member, &step, visit);
                };
                (enter(field), ...);
            },
            foundation::fieldsOf<Value>);
    } else if constexpr (requires { value.has_value(); }) {
        if (value) walk(*value, way, visit);
    } else if constexpr (std::is_arithmetic_v<Value> || std::is_same_v<Value, std::string>) {
        visit(*way, value);
    } else {
        for (std::size_t index = 0; index < value.size(); ++index) {
            const Way step{way, {}, index};
            walk(value[index], &step, visit);
        }
    }
}

/// The words of which a text is one, by its key; of any other key none.
std::vector<std::string_view> knownWords(const Way& way) {
    if (way.key == "state" && way.before == nullptr) return {"watching"};
    if (way.key == "state") return {"ALARM", "OK", "INSUFFICIENT_DATA"};
    if (way.key == "comparison")
        return {"GreaterThanThreshold",
                "GreaterThanOrEqualToThreshold",
                "LessThanThreshold",
                "LessThanOrEqualToThreshold",
                "LessThanLowerThreshold",
                "GreaterThanUpperThreshold",
                "LessThanLowerOrGreaterThanUpperThreshold"};
    if (way.key != "unit") return {};
    return {"Seconds",
            "Microseconds",
            "Milliseconds",
            "Bytes",
            "Kilobytes",
            "Megabytes",
            "Gigabytes",
            "Terabytes",
            "Bits",
            "Kilobits",
            "Megabits",
            "Gigabits",
            "Terabits",
            "Percent",
            "Count",
            "Bytes/Second",
            "Kilobytes/Second",
            "Megabytes/Second",
            "Gigabytes/Second",
            "Terabytes/Second",
            "Bits/Second",
            "Kilobits/Second",
            "Megabits/Second",
            "Gigabits/Second",
            "Terabits/Second",
            "Count/Second",
            "None"};
}

bool areAlikeButForCase(std::string_view one, std::string_view other) {
    const auto small = [](char c) { return c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c; };
    return one != other && std::ranges::equal(one, other, {}, small, small);
}

void judge(Notes& notes, const Way& way, const std::string& text) {
    for (const std::string_view known : knownWords(way))
        if (areAlikeButForCase(text, known))
            notes.add(way.path(), " is \"" + text + "\", which is written " + std::string{known});
}

bool isTime(std::string_view key) { return key == "t" || key.ends_with("Ms"); }

void judge(Notes& notes, const Way& way, std::int64_t number) {
    constexpr std::int64_t latestLikelySeconds = 100'000'000'000;  // in milliseconds, early in 1973
    if (isTime(way.key) && number > 0 && number < latestLikelySeconds)
        notes.add(way.path(), " counts milliseconds; this looks like seconds");
    if (way.key == "firing" && number < 0) notes.add(way.path(), " is negative");
}

void judge(Notes&, const Way&, double) {}
void judge(Notes&, const Way&, bool) {}

template <class Snapshot>
void noteValues(Notes& notes, const Snapshot& snapshot) {
    walk(snapshot, nullptr, [&](const Way& way, const auto& value) { judge(notes, way, value); });
}

void noteHeader(Notes& notes, Date updated, std::int64_t intervalSeconds, Date now) {
    constexpr std::int64_t day = 86'400;
    if (updated > now)
        notes.add("updatedMs", " lies in the future: until then the file does not age");
    if (intervalSeconds <= 0)
        notes.add("intervalSeconds", " is not positive: the file ages by the least limit");
    if (intervalSeconds > day)
        notes.add("intervalSeconds", " is over a day: does it count milliseconds?");
}

void noteLists(Notes& notes, const AlarmsSnapshot& snapshot) {
    const auto listed = static_cast<std::int64_t>(snapshot.topAlarms.size());
    if (snapshot.firing >= 0 && snapshot.firing < listed)
        notes.add("firing", " is " + std::to_string(snapshot.firing) + ", less than the " +
                                std::to_string(listed) + " alarms that are listed");
    const bool haveFailed = std::ranges::all_of(snapshot.targets, &snapshot::Target::failed);
    if (haveFailed && !snapshot.targets.empty()) notes.add("targets", " have all failed");
}

template <class Pin>
void noteLists(Notes& notes, const snapshot::PinsSnapshot<Pin>& snapshot) {
    const Way pins{nullptr, "pins"};
    for (std::size_t index = 0; index < snapshot.pins.size(); ++index) {
        const Pin& pin = snapshot.pins[index];
        const Way way{&pins, {}, index};
        if (!std::ranges::is_sorted(pin.points, {}, &snapshot::SnapshotPoint::t))
            notes.add(way.path(), "/points do not stand oldest first");
        if (!pin.points.empty() && !pin.latest)
            notes.add(way.path(), "/latest is missing, though there are points: no value is shown");
    }
}

/// What the bytes look like instead of JSON.
void noteForm(Notes& notes, std::string_view bytes, const foundation::DecodingFault& fault) {
    using namespace std::string_view_literals;
    const auto begins = [&](std::string_view with) { return bytes.starts_with(with); };
    const std::string_view rest = bytes.substr(std::min(fault.offset, bytes.size()));
    if (begins("\xEF\xBB\xBF"))
        notes.add("", "it begins with a byte order mark, which JSON does not have");
    if (begins("\xFF\xFE") || begins("\xFE\xFF") || begins("{\0"sv) || begins("\0{"sv))
        notes.add("", "it begins as UTF-16 does, and JSON is UTF-8");
    if (begins("\x1F\x8B")) notes.add("", "it begins as gzip does: it has to be written unpacked");
    if (rest.starts_with("//") || rest.starts_with("/*") || rest.starts_with('#'))
        notes.add("", "JSON has no comments");
}

/// Members that no table knows, and those given twice, with their lines.
template <class Snapshot>
void noteUnread(Notes& notes, std::string_view bytes) {
    std::size_t line = 1, counted = 0;
    const auto tell = [&](const foundation::UnreadKey& unread) {
        line += static_cast<std::size_t>(
            std::ranges::count(bytes.substr(counted, unread.offset - counted), '\n'));
        counted = unread.offset;
        const std::string why =
            unread.isRepeated
                ? ": given twice, and the first counts"
                : ": not read" + foundation::didYouMean(unread.key, unread.members,
                                                        &foundation::shapes::Member::key);
        notes.add("line " + std::to_string(line) + ": ", visible(unread.key, 40) + why);
    };
    static_cast<void>(foundation::decodeJSON<Snapshot>(bytes, {}, tell));
}

}  // namespace

template <class Snapshot>
std::vector<std::string> notesOn(const snapshot::Reading<Snapshot>& reading, Date now) {
    Notes notes;
    if (const std::string* bytes = reading.bytes()) noteUnread<Snapshot>(notes, *bytes);
    if (const auto* fault = reading.decodingFault()) noteForm(notes, *reading.bytes(), *fault);
    if (const Snapshot* snapshot = reading.snapshot()) {
        noteValues(notes, *snapshot);
        noteHeader(notes, Date::fromMilliseconds(snapshot->updatedMs), snapshot->intervalSeconds,
                   now);
        noteLists(notes, *snapshot);
    }
    return notes.take();
}

template std::vector<std::string> notesOn(const snapshot::Reading<AlarmsSnapshot>&, Date);
template std::vector<std::string> notesOn(const snapshot::Reading<snapshot::AlarmPinsSnapshot>&,
                                          Date);
template std::vector<std::string> notesOn(const snapshot::Reading<snapshot::MetricPinsSnapshot>&,
                                          Date);

}  // namespace tessary::command
