#include "desktop/places/state.h"

#include <algorithm>
#include <fcntl.h>
#include <sys/file.h>
#include <system_error>

#include "desktop/glib/note.h"
#include "platform/foundation/json_writing.h"
#include "platform/system/files.h"
#include "platform/system/folders.h"
#include "platform/system/output.h"

namespace tessary::places {

/// The file's records where they are others than the desktop's.
struct StoredOffset {
    std::string from{};  ///< an edge
    std::int64_t points{};
};
struct StoredPlace {
    std::optional<MonitorName> monitor{};
    StoredOffset x{}, y{};
};
struct StoredSize {
    std::int64_t width{}, height{};
};
struct StoredWidget {
    std::int64_t number{};
    std::string widget{};
    std::string family{};
    std::optional<StoredSize> size{};  ///< files had none before widgets could have other sizes
    std::optional<std::string> pin{};
    StoredPlace place{};
};
struct StoredWidgets {
    std::vector<StoredWidget> widgets{};
};

}  // namespace tessary::places

namespace tessary::foundation {

template <>
inline constexpr auto fieldsOf<places::MonitorName> = std::tuple{
    Field{"maker", &places::MonitorName::maker},
    Field{"model", &places::MonitorName::model},
    Field{"connector", &places::MonitorName::connector},
};
template <>
inline constexpr auto fieldsOf<places::StoredOffset> = std::tuple{
    Field{"from", &places::StoredOffset::from},
    Field{"points", &places::StoredOffset::points},
};
template <>
inline constexpr auto fieldsOf<places::StoredPlace> = std::tuple{
    Field{"monitor", &places::StoredPlace::monitor, Key::always},
    Field{"x", &places::StoredPlace::x},
    Field{"y", &places::StoredPlace::y},
};
template <>
inline constexpr auto fieldsOf<places::StoredSize> = std::tuple{
    Field{"width", &places::StoredSize::width},
    Field{"height", &places::StoredSize::height},
};
template <>
inline constexpr auto fieldsOf<places::StoredWidget> = std::tuple{
    Field{"number", &places::StoredWidget::number},
    Field{"widget", &places::StoredWidget::widget},
    Field{"family", &places::StoredWidget::family},
    Field{"size", &places::StoredWidget::size},
    Field{"pin", &places::StoredWidget::pin, Key::always},
    Field{"place", &places::StoredWidget::place},
};
template <>
inline constexpr auto fieldsOf<places::StoredWidgets> = std::tuple{
    Field{"widgets", &places::StoredWidgets::widgets},
};

}  // namespace tessary::foundation

namespace tessary::places {

using foundation::Fault;
using foundation::Result;

namespace fs = std::filesystem;

namespace {

constexpr std::int64_t largestSide = 10'000;

/// Of some thousands of widgets.
constexpr foundation::Limits fileLimits{
    .bytes = std::size_t{16} << 20U, .depth = 16, .values = 100'000};

bool isWithin(std::int64_t value, std::int64_t least, std::int64_t most) {
    return value >= least && value <= most;
}

std::optional<Offset> offset(const StoredOffset& from, std::string_view start,
                             std::string_view end) {
    if (!isWithin(from.points, 0, farthest) || (from.from != start && from.from != end)) return {};
    return Offset{from.from == end ? From::end : From::start, static_cast<int>(from.points)};
}

/// The sizes that there were before the file told a widget's.
std::optional<StoredSize> formerSize(std::string_view family) {
    if (family == "small") return StoredSize{164, 164};
    if (family == "medium") return StoredSize{344, 164};
    return std::nullopt;
}

std::optional<PlacedWidget> placed(const StoredWidget& from) {
    const auto x = offset(from.place.x, "left", "right");
    const auto y = offset(from.place.y, "top", "bottom");
    const auto size = from.size ? from.size : formerSize(from.family);
    if (!x || !y || !size || !isWithin(from.number, 1, std::numeric_limits<int>::max())) return {};
    if (!isWithin(size->width, 1, largestSide) || !isWithin(size->height, 1, largestSide))
        return {};
    const Family family{from.family,
                        {static_cast<int>(size->width), static_cast<int>(size->height)}};
    return PlacedWidget{static_cast<int>(from.number), from.widget, family, from.pin,
                        Place{from.place.monitor, *x, *y}};
}

StoredOffset stored(Offset offset, const char* start, const char* end) {
    return {offset.from == From::end ? end : start, offset.points};
}

StoredWidget stored(const PlacedWidget& widget) {
    const auto& [monitor, x, y] = widget.place;
    const auto [width, height] = widget.family.size;
    return {widget.number,      widget.kind,
            widget.family.name, StoredSize{width, height},
            widget.pin,         {monitor, stored(x, "left", "right"), stored(y, "top", "bottom")}};
}

/// Moves a file out of the way, never onto another.
Result<void> setAside(const fs::path& file) {
    for (int n = 1;; ++n) {
        const auto aside = file.native() + ".unreadable-" + std::to_string(n);
        std::error_code error;
        if (fs::exists(fs::symlink_status(aside, error))) continue;
        fs::rename(file, aside, error);
        if (error)
            return Fault{file.native() +
                         " is unreadable and cannot be set aside: " + error.message()};
        glib::note(file.native() + " is unreadable and was set aside as " + aside);
        return {};
    }
}

}  // namespace

FileLock::FileLock() {
    const auto file = stateFile();
    if (!file) return;
    std::error_code error;
    if (fs::create_directories(file->parent_path(), error))
        fs::permissions(file->parent_path(), fs::perms::owner_all, error);
    folder_ =
        system::Descriptor{::open(file->parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)};
    system::uninterrupted([this] { return ::flock(folder_.number(), LOCK_EX); });
}

Result<fs::path> stateFile() {
    if (const auto folder = system::settingsFolder())
        return *folder / "tessary-widgets/desktop.json";
    return Fault{"there is no home folder for the widgets' file"};
}

std::string encodeWidgets(const std::vector<PlacedWidget>& widgets) {
    StoredWidgets all;
    for (const auto& widget : widgets) all.widgets.push_back(stored(widget));
    return foundation::toJSON(all, foundation::JSONWriter::Style::indented) + "\n";
}

std::optional<std::vector<PlacedWidget>> decodeWidgets(std::string_view text) {
    const auto all = foundation::decodeJSON<StoredWidgets>(text, fileLimits);
    if (!all) return std::nullopt;
    std::vector<PlacedWidget> widgets;
    for (const auto& from : all->widgets) {
        const auto widget = placed(from);
        const auto same = [&](const auto& other) { return other.number == from.number; };
        if (!widget || std::ranges::any_of(widgets, same)) return std::nullopt;
        widgets.push_back(*widget);
    }
    return widgets;
}

Result<std::vector<PlacedWidget>> loadWidgets(const fs::path& file) {
    std::error_code error;
    if (fs::status(file, error).type() == fs::file_type::not_found)
        return std::vector<PlacedWidget>{};
    const auto text = system::readFile(file);
    if (auto widgets = text ? decodeWidgets(*text) : std::nullopt) return *std::move(widgets);
    return setAside(file).andThen([] { return Result{std::vector<PlacedWidget>{}}; });
}

Result<void> saveWidgets(const fs::path& file, const std::vector<PlacedWidget>& widgets) {
    return system::saveFile(file, encodeWidgets(widgets));
}

}  // namespace tessary::places
