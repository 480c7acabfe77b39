// The fonts that are installed on the machine, for texts that the stand-in lacks characters for.
#pragma once

#include <filesystem>
#include <vector>

#include "platform/foundation/result.h"

struct _FcConfig;

namespace tessary::drawing {

/// All fonts of the machine, and the stand-in wherever its folder is. Loaded at the first call and
/// made current then, before Pango would load the configuration once more. From then on nothing but
/// the fonts themselves is looked for or read.
_FcConfig* machineFonts();

/// What setting type may still read then: the folders of the machine's fonts, and of those in or
/// above the home folder, where other things lie beside them, each file alone.
std::vector<std::filesystem::path> fontPlaces();

/// Whether there is anything to set type in: the fault is that no font can be read.
foundation::Result<void> haveFonts();

}  // namespace tessary::drawing
