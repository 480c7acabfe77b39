#include "platform/system/folders.h"

#include <cstdlib>

namespace tessary::system {
namespace {

namespace fs = std::filesystem;

std::optional<fs::path> absolutePath(const char* variable) {
    const char* const value = std::getenv(variable);
    if (value == nullptr || value[0] != '/') return std::nullopt;
    return fs::path{value};
}

std::optional<fs::path> folder(const char* variable, const char* belowHome) {
    if (auto named = absolutePath(variable)) return named;
    if (auto home = absolutePath("HOME")) return *home / belowHome;
    return std::nullopt;
}

bool isOneFolderName(std::string_view name) {
    constexpr std::string_view separators{"/\0", 2};
    return !name.empty() && name != "." && name != ".." &&
           name.find_first_of(separators) == std::string_view::npos;
}

}  // namespace

std::optional<fs::path> dataFolder() { return folder("XDG_DATA_HOME", ".local/share"); }

std::optional<fs::path> settingsFolder() { return folder("XDG_CONFIG_HOME", ".config"); }

std::optional<fs::path> stateFolder() { return folder("XDG_STATE_HOME", ".local/state"); }

std::optional<fs::path> groupContainer(std::string_view identifier) {
    const auto home = dataFolder();
    if (!home || !isOneFolderName(identifier)) return std::nullopt;
    return *home / "group-containers" / identifier;
}

}  // namespace tessary::system
