// The user's own folders, as the XDG base directories name them.
//
//     dataFolder()          // "/home/ana/.local/share"
//     settingsFolder()      // "/home/ana/.config"
#pragma once

#include <filesystem>
#include <optional>

namespace tessary::system {

/// $XDG_DATA_HOME, with $HOME/.local/share where that is unset, empty or relative; none where HOME
/// is no absolute path either. The folder need not exist.
std::optional<std::filesystem::path> dataFolder();

/// $XDG_CONFIG_HOME, or $HOME/.config; likewise.
std::optional<std::filesystem::path> settingsFolder();

}  // namespace tessary::system
