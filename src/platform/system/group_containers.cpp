#include "platform/system/group_containers.h"

#include <cstdlib>
#include <string>

namespace tessary::system {
namespace {

namespace fs = std::filesystem;

std::optional<fs::path> absolutePath(const char* variable) {
    const char* const value = std::getenv(variable);
    if (value == nullptr || value[0] != '/') return std::nullopt;
    return fs::path{value};
}

std::optional<fs::path> dataHome() {
    if (auto folder = absolutePath("XDG_DATA_HOME")) return folder;
    if (auto home = absolutePath("HOME")) return *home / ".local" / "share";
    return std::nullopt;
}

bool isOneFolderName(std::string_view name) {
    constexpr std::string_view separators{"/\0", 2};
    return !name.empty() && name != "." && name != ".." &&
           name.find_first_of(separators) == std::string_view::npos;
}

}  // namespace

std::optional<fs::path> groupContainer(std::string_view identifier) {
    if (!isOneFolderName(identifier)) return std::nullopt;
    const auto home = dataHome();
    if (!home) return std::nullopt;
    return *home / "group-containers" / identifier;
}

}  // namespace tessary::system
