// The user's own folders, as the XDG base directories name them, and where the folder that an
// application group shares lies.
//
//     dataFolder()          // "/home/ana/.local/share"
//     settingsFolder()      // "/home/ana/.config"
//     stateFolder()         // "/home/ana/.local/state"
//     groupContainer("A1B2C3.com.tessary.desktop")
//         // "/home/ana/.local/share/group-containers/A1B2C3.com.tessary.desktop"
#pragma once

#include <filesystem>
#include <optional>
#include <string_view>

namespace tessary::system {

/// $XDG_DATA_HOME, with $HOME/.local/share where that is unset, empty or relative; none where HOME
/// is no absolute path either. The folder need not exist.
std::optional<std::filesystem::path> dataFolder();

/// $XDG_CONFIG_HOME, or $HOME/.config; likewise.
std::optional<std::filesystem::path> settingsFolder();

/// $XDG_STATE_HOME, or $HOME/.local/state; likewise.
std::optional<std::filesystem::path> stateFolder();

/// `group-containers/IDENTIFIER` in the data folder. None for an identifier that is empty, "." or
/// "..", or that holds "/" or NUL, and none when no home is known. The folder need not exist.
std::optional<std::filesystem::path> groupContainer(std::string_view identifier);

}  // namespace tessary::system
