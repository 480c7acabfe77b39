#include "platform/system/group_containers.h"

#include "platform/system/folders.h"

namespace tessary::system {
namespace {

namespace fs = std::filesystem;

bool isOneFolderName(std::string_view name) {
    constexpr std::string_view separators{"/\0", 2};
    return !name.empty() && name != "." && name != ".." &&
           name.find_first_of(separators) == std::string_view::npos;
}

}  // namespace

std::optional<fs::path> groupContainer(std::string_view identifier) {
    if (!isOneFolderName(identifier)) return std::nullopt;
    const auto home = dataFolder();
    if (!home) return std::nullopt;
    return *home / "group-containers" / identifier;
}

}  // namespace tessary::system
