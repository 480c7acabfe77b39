// Where the folder that an application group shares lies.
//
//     groupContainer("A1B2C3.com.tessary.desktop")
//         // "/home/ana/.local/share/group-containers/A1B2C3.com.tessary.desktop"
#pragma once

#include <filesystem>
#include <optional>
#include <string_view>

namespace tessary::system {

/// `$XDG_DATA_HOME/group-containers/IDENTIFIER`, with `$HOME/.local/share` where XDG_DATA_HOME is
/// unset, empty or relative. A HOME that is relative counts as unknown. None for an identifier that
/// is empty, "." or "..", or that holds "/" or NUL, and none when no home is known. The folder need
/// not exist.
std::optional<std::filesystem::path> groupContainer(std::string_view identifier);

}  // namespace tessary::system
