#include "desktop/signs/zone.h"

#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <system_error>

namespace tessary::signs {

std::optional<std::string> machineZone() {
    constexpr std::string_view database = "/zoneinfo/";
    if (std::getenv("TZ") != nullptr) return std::nullopt;
    std::error_code missing;
    const auto file = std::filesystem::canonical(zoneFile, missing).string();
    const auto at = file.find(database);
    if (at == std::string::npos) return std::nullopt;
    const auto name = file.substr(at + database.size());
    const bool isVariant = name.starts_with("posix/") || name.starts_with("right/");
    return isVariant ? name.substr(name.find('/') + 1) : name;
}

}  // namespace tessary::signs
