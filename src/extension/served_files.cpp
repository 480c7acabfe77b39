#include "extension/served_files.h"

#include <algorithm>
#include <string_view>

#include "platform/system/folders.h"

namespace tessary::extension {

namespace fs = std::filesystem;

bool ServedFiles::operator()(const fs::path& path) const {
    const auto is = [&](const fs::path& file) { return file.native() == path.native(); };
    if (std::ranges::any_of(places_.dictionaries, is)) return true;
    const std::optional<fs::path> container = containerOf(path);
    return container && std::ranges::any_of(snapshot::fileNames, [&](std::string_view name) {
               return is(*container / snapshot::pathOf(name));
           });
}

std::optional<fs::path> ServedFiles::containerOf(const fs::path& file) const {
    if (places_.container) return places_.container;
    return system::groupContainer(file.parent_path().parent_path().filename().native());
}

}  // namespace tessary::extension
