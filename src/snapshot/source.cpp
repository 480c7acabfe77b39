#include "snapshot/source.h"

#include <system_error>
#include <utility>

#include "platform/foundation/json_decoding.h"
#include "platform/system/folders.h"

namespace tessary::snapshot {

namespace fs = std::filesystem;

/// An information dictionary, as far as it is read.
struct Information {
    std::optional<std::string> appGroup{};
};

}  // namespace tessary::snapshot

template <>
inline constexpr auto tessary::foundation::fieldsOf<tessary::snapshot::Information> =
    std::tuple{Field{"TessaryAppGroup", &tessary::snapshot::Information::appGroup}};

namespace tessary::snapshot {

namespace {

constexpr const char* ownGroup = "com.tessary.desktop";

AppGroup::Rule ruleFor(const std::optional<std::string>& value) {
    if (!value) return AppGroup::Rule::missing;
    if (value->starts_with('.')) return AppGroup::Rule::beginsWithDot;
    if (value->starts_with('$')) return AppGroup::Rule::beginsWithDollar;
    return AppGroup::Rule::identifier;
}

/// None where the file is missing, unreadable or no JSON, or has no text there.
std::optional<std::string> groupIn(const system::FileContents& dictionary) {
    if (!dictionary) return std::nullopt;
    auto information = foundation::decodeJSON<Information>(*dictionary);
    return information ? std::move(information->appGroup) : std::nullopt;
}

}  // namespace

fs::path pathOf(std::string_view name) { return "widgets/" + std::string{name} + ".json"; }

Places Places::given(std::optional<fs::path> container, const std::optional<fs::path>& dictionary) {
    if (dictionary) return {std::move(container), {*dictionary}};
    if (container) return {std::move(container), {}};
    std::error_code ignored;
    const fs::path folder = fs::read_symlink("/proc/self/exe", ignored).parent_path();
    return {{}, {folder / "info.json", folder.parent_path() / "share/tessary-widgets/info.json"}};
}

AppGroup Source::group() const {
    if (places.dictionaries.empty()) return {ownGroup, AppGroup::Rule::identifier};
    system::FileContents dictionary = system::absent();
    for (const fs::path& file : places.dictionaries)
        if (dictionary == system::FileContents{system::absent()}) dictionary = read(file);
    std::optional<std::string> value = groupIn(dictionary);
    const AppGroup::Rule rule = ruleFor(value);
    return {std::move(value), rule};
}

Location Source::locate(std::string_view name) const {
    Location location{.group = group()};
    if (location.group.rule != AppGroup::Rule::identifier) return location;
    location.container =
        places.container ? places.container : system::groupContainer(*location.group.value);
    if (location.container) location.file = *location.container / pathOf(name);
    return location;
}

}  // namespace tessary::snapshot
