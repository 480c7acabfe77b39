// The fonts that are installed on the machine, for texts that the stand-in lacks characters for.
#pragma once

#include <filesystem>
#include <vector>

struct _FcConfig;

namespace tessary::drawing {

/// All fonts of the machine, and the stand-in wherever its folder is. Loaded at the first call and
/// made current then, before Pango would load the configuration once more. From then on nothing but
/// the fonts themselves is looked for or read.
_FcConfig* machineFonts();

/// What setting type may still read then: the folders of the machine's fonts, and of those in or
/// above the home folder, where other things lie beside them, each file alone.
std::vector<std::filesystem::path> fontPlaces();

/// Whether a font can be read, so that there is something to set type in.
bool hasUsableFonts();

}  // namespace tessary::drawing
