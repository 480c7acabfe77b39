// The fonts that are installed on the machine, for texts that the stand-in lacks characters for.
#pragma once

#include <filesystem>
#include <vector>

struct _FcConfig;

namespace tessary::drawing {

/// All fonts of the machine, and the stand-in wherever its folder is. Loaded at the first call and
/// made current then, before Pango would load the configuration once more on a thread of its own.
_FcConfig* machineFonts();

/// The files and folders that setting type may read: fonts, the configuration that lists them, and
/// its cache. Some may not exist.
std::vector<std::filesystem::path> fontPlaces();

}  // namespace tessary::drawing
