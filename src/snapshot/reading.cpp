#include "snapshot/reading.h"

#include "platform/system/surroundings.h"

namespace tessary::snapshot {

namespace {

AppGroup::Rule ruleFor(const std::optional<std::string>& value) {
    if (!value) return AppGroup::Rule::missing;
    if (value->starts_with('.')) return AppGroup::Rule::beginsWithDot;
    if (value->starts_with('$')) return AppGroup::Rule::beginsWithDollar;
    return AppGroup::Rule::identifier;
}

}  // namespace

std::filesystem::path pathOf(std::string_view name) {
    return "widgets/" + std::string{name} + ".json";
}

AppGroup appGroup() {
    std::optional<std::string> value = system::surroundings().information("TessaryAppGroup");
    const AppGroup::Rule rule = ruleFor(value);
    return {std::move(value), rule};
}

Location locate(std::string_view name) {
    Location location{.group = appGroup()};
    if (location.group.rule != AppGroup::Rule::identifier) return location;
    location.container = system::surroundings().container(*location.group.value);
    if (location.container) location.file = *location.container / pathOf(name);
    return location;
}

system::FileContents readContents(const std::filesystem::path& file) {
    return system::surroundings().read(file);
}

}  // namespace tessary::snapshot
