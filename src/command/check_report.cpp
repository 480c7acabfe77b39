#include "command/check_report.h"

#include <algorithm>
#include <cmath>

#include "platform/foundation/visible_text.h"

namespace tessary::foundation {

using namespace command;

template <>
inline constexpr auto fieldsOf<snapshot::AppGroup> = std::tuple{
    Field{"value", &snapshot::AppGroup::value},
    Field{"rule", &snapshot::AppGroup::rule},
};
template <>
inline constexpr auto fieldsOf<Counts> = std::tuple{
    Field{"firing", &Counts::firing},       Field{"targets", &Counts::targets},
    Field{"topAlarms", &Counts::topAlarms}, Field{"pins", &Counts::pins},
    Field{"points", &Counts::points},
};
template <>
inline constexpr auto fieldsOf<Repeat> = std::tuple{
    Field{"identifier", &Repeat::identifier},
    Field{"times", &Repeat::times},
};
template <>
inline constexpr auto fieldsOf<PinState> = std::tuple{
    Field{"id", &PinState::id},           Field{"label", &PinState::label},
    Field{"profile", &PinState::profile}, Field{"shows", &PinState::shows},
    Field{"error", &PinState::error},     Field{"hidden", &PinState::hidden},
};
template <>
inline constexpr auto fieldsOf<Shown> = std::tuple{
    Field{"case", &Shown::display},  Field{"why", &Shown::why},
    Field{"stale", &Shown::stale},   Field{"staleAfter", &Shown::staleAfter},
    Field{"paused", &Shown::paused}, Field{"pins", &Shown::pins},
};
template <>
inline constexpr auto fieldsOf<FileFinding> = std::tuple{
    Field{"name", &FileFinding::name},
    Field{"widget", &FileFinding::widget},
    Field{"path", &FileFinding::path},
    Field{"step", &FileFinding::step},
    Field{"problem", &FileFinding::problem},
    Field{"size", &FileFinding::size},
    Field{"modified", &FileFinding::modified},
    Field{"fault", &FileFinding::fault},
    Field{"schemaVersion", &FileFinding::schemaVersion},
    Field{"updated", &FileFinding::updated},
    Field{"intervalSeconds", &FileFinding::intervalSeconds},
    Field{"counts", &FileFinding::counts},
    Field{"repeated", &FileFinding::repeated},
    Field{"notes", &FileFinding::notes},
    Field{"shows", &FileFinding::shows},
};
template <>
inline constexpr auto fieldsOf<Inspection> = std::tuple{
    Field{"now", &Inspection::now},
    Field{"usable", &Inspection::usable},
    Field{"group", &Inspection::group},
    Field{"groupAssumed", &Inspection::groupAssumed},
    Field{"container", &Inspection::container},
    Field{"files", &Inspection::files},
};
template <>
inline constexpr auto namesOf<Step> = NamedCases<Step, 6>{{
    {Step::group, "group"},
    {Step::container, "container"},
    {Step::file, "file"},
    {Step::content, "content"},
    {Step::schema, "schema"},
    {Step::usable, "usable"},
}};
template <>
inline constexpr auto namesOf<PinCondition> = NamedCases<PinCondition, 4>{{
    {PinCondition::fresh, "fresh"},
    {PinCondition::stale, "stale"},
    {PinCondition::authExpired, "authExpired"},
    {PinCondition::error, "error"},
}};

}  // namespace tessary::foundation

namespace tessary::command {

using foundation::visible;

static void writeJSON(foundation::JSONWriter& json, const ContentFault& fault) {
    const foundation::DecodingFault& reason = fault.reason;
    const Excerpt& at = fault.at;
    json.object([&] {
        json.member("path", reason.path).member("expected", reason.expected);
        json.member("found", reason.found).member("line", at.line).member("column", at.column);
        json.member("offset", reason.offset).member("text", at.text).member("caret", at.caret);
    });
}

namespace {

constexpr std::size_t labelWidth = 11;
constexpr std::size_t mostListed = 20;
constexpr std::size_t longestShown = 4096;  // of a path, in cells

/// "40 s", "12 min", "3 h", "5 days"; cut off, never rounded up.
std::string duration(double seconds) {
    struct Unit {
        double seconds;
        const char* name;
    };
    constexpr Unit units[] = {{86400, "days"}, {3600, "h"}, {60, "min"}, {1, "s"}};
    for (const auto& [size, name] : units) {
        // A day or a few are better told in hours.
        if (seconds < (size == 86400 ? 2 * size : size) && size != 1) continue;
        std::string number = std::to_string(std::floor(seconds / size));
        return number.substr(0, number.find('.')) + ' ' + name;
    }
    return "";
}

std::string padded(std::string text, std::size_t width) {
    text.resize(std::max(width, text.size()), ' ');
    return text;
}

std::string counted(std::int64_t count, const std::string& one, const std::string& many) {
    return std::to_string(count) + ' ' + (count == 1 ? one : many);
}

/// Lines with a label before the first of each group.
class Lines {
public:
    explicit Lines(const Inspection& inspection, const locale::UserLocale& locale)
        : now_(inspection.now), locale_(locale) {}

    void plain(const std::string& line) { text_ += line + '\n'; }
    void labelled(const std::string& label, const std::string& line) {
        text_ += padded(label, labelWidth) + line + '\n';
    }
    std::string time(Date date) const { return locale_.timestamp(date); }
    /// "2024-11-16T16:00:00+00:00 (40 s ago)"
    std::string aged(Date date) const {
        const double age = now_ - date;
        const std::string span = duration(std::abs(age));
        return time(date) + (age < 0 ? " (in " + span + ")" : " (" + span + " ago)");
    }
    std::string take() { return std::move(text_); }

private:
    Date now_;
    const locale::UserLocale& locale_;
    std::string text_{};
};

std::string shownPath(const std::optional<std::string>& path) {
    return visible(path.value_or(""), longestShown);
}

void tellFile(Lines& lines, const FileFinding& file) {
    if (!file.path) return;
    lines.labelled("  file", shownPath(file.path));
    if (!file.modified) return;
    const std::string size = file.size ? counted(*file.size, "byte", "bytes") + ", " : "";
    lines.labelled("", size + "written " + lines.aged(*file.modified));
}

void tellFault(Lines& lines, const FileFinding& file) {
    if (!file.problem) return;
    const std::string problem = visible(*file.problem, longestShown);
    if (!file.fault) return lines.labelled("  problem", problem);
    const Excerpt& at = file.fault->at;
    const std::string number = std::to_string(at.line);
    lines.labelled("  problem", shownPath(file.path) + ':' + number + ':' +
                                    std::to_string(at.column) + ": " + problem);
    if (at.text.empty()) return;
    lines.labelled("", number + " | " + at.text);
    lines.labelled("", std::string(number.size(), ' ') + " | " + at.caret);
}

std::string countsIn(const Counts& counts) {
    if (counts.pins)
        return counted(*counts.pins, "pin", "pins") + ", " +
               counted(counts.points.value_or(0), "point", "points");
    return std::to_string(counts.firing.value_or(0)) + " firing, " +
           counted(counts.targets.value_or(0), "target", "targets") + ", " +
           counted(counts.topAlarms.value_or(0), "alarm", "alarms") + " listed";
}

void tellContent(Lines& lines, const FileFinding& file) {
    if (!file.counts) return;
    lines.labelled("  content", "schema version " + std::to_string(*file.schemaVersion) +
                                    ", updated " + lines.aged(*file.updated) + ", every " +
                                    std::to_string(*file.intervalSeconds) + " s");
    lines.labelled("", countsIn(*file.counts));
}

/// The first of many, and how many more there are.
template <class Element, class Line>
void tellList(Lines& lines, const std::string& label, const std::vector<Element>& elements,
              const Line& line) {
    const std::size_t shown = std::min(elements.size(), mostListed);
    for (std::size_t index = 0; index < shown; ++index)
        lines.labelled(index == 0 ? label : "", line(elements[index]));
    if (elements.size() > shown)
        lines.labelled("", "... and " + std::to_string(elements.size() - shown) + " more");
}

std::string freshness(const Lines& lines, const Shown& shown) {
    if (!shown.staleAfter) return "";
    return (shown.stale ? "stale since " : "fresh until ") + lines.time(*shown.staleAfter);
}

std::string pinLine(const PinState& pin) {
    std::string name = visible(pin.label, 40);
    if (pin.id != pin.label) name += " (" + visible(pin.id, 40) + ")";
    if (pin.hidden) return name + ": hidden behind an earlier pin of this identifier";
    switch (pin.shows) {
        case PinCondition::fresh: return name + ": fresh";
        case PinCondition::stale: return name + ": stale";
        case PinCondition::authExpired:
            return name + ": sign-in expired for " + visible(pin.profile, 40);
        case PinCondition::error: return name + ": error: " + visible(*pin.error, 120);
    }
    return name;
}

void tellShown(Lines& lines, const Shown& shown) {
    const std::string reason = shown.why.empty() ? freshness(lines, shown) : shown.why;
    const std::string byDefault =
        shown.pins.empty() ? "" : ", " + visible(shown.pins.front().label, 40) + " by default";
    lines.labelled("  shows", shown.display + byDefault + ": " + reason);
    tellList(lines, "  paused", shown.paused, [](const snapshot::Target& target) {
        return visible(target.profile, 40) + " · " + visible(target.region, 40) +
               ": sign-in expired for " + visible(target.profile, 40);
    });
    tellList(lines, "  pins", shown.pins, pinLine);
}

void tell(Lines& lines, const FileFinding& file) {
    const bool isUsable = file.step == Step::usable;
    lines.plain("\n" + file.name + (isUsable ? ": usable" : ": not usable") + ", for the " +
                file.widget + " widget");
    tellFile(lines, file);
    tellFault(lines, file);
    tellContent(lines, file);
    tellList(lines, "  note", file.notes, [](const std::string& note) { return note; });
    tellList(lines, "  repeated", file.repeated, [](const Repeat& repeat) {
        return visible(repeat.identifier, 80) + ": " + std::to_string(repeat.times) + " times";
    });
    tellShown(lines, file.shows);
}

std::string groupIn(const Inspection& inspection) {
    if (inspection.group.rule != snapshot::AppGroup::Rule::identifier)
        return "refused: " + inspection.files.front().problem.value_or("");
    const std::string value = '"' + visible(*inspection.group.value) + '"';
    if (inspection.groupAssumed) return value + ", assumed for the given container";
    return value + ", accepted: it begins with neither a dot nor a dollar sign";
}

}  // namespace

std::string asText(const Inspection& inspection, const locale::UserLocale& locale) {
    Lines lines{inspection, locale};
    lines.labelled("checked", lines.time(inspection.now));
    lines.labelled("group", groupIn(inspection));
    lines.labelled("container", inspection.container ? shownPath(inspection.container) : "none");
    for (const FileFinding& file : inspection.files) tell(lines, file);
    return lines.take();
}

std::string asJSON(const Inspection& inspection, foundation::JSONWriter::Style style) {
    return foundation::toJSON(inspection, style) + "\n";
}

int exitStatus(const Inspection& inspection, const Strictness& strictness) {
    const bool isFine = std::ranges::none_of(inspection.files, [&](const FileFinding& file) {
        const bool isNoted = !file.notes.empty() || !file.repeated.empty();
        return (strictness.notes && isNoted) || (strictness.stale && file.shows.stale);
    });
    return inspection.usable && isFine ? 0 : 1;
}

}  // namespace tessary::command
