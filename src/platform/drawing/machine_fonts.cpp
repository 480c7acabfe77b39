#include "platform/drawing/machine_fonts.h"

#include <fontconfig/fontconfig.h>

#include "platform/drawing/release.h"

namespace tessary::drawing {

namespace {

using ConfigPtr = Owned<FcConfig, FcConfigDestroy>;

/// Adds the paths of a list of fontconfig's, which goes with it.
void take(FcStrList* list, std::vector<std::filesystem::path>& places) {
    while (const FcChar8* path = FcStrListNext(list))
        places.emplace_back(reinterpret_cast<const char*>(path));
    FcStrListDone(list);
}

}  // namespace

FcConfig* machineFonts() {
    static FcConfig* const config = [] {
        FcConfig* made = FcInitLoadConfigAndFonts();
        FcConfigAppFontAddDir(made, reinterpret_cast<const FcChar8*>(TESSARY_FONT_DIR));
        FcConfigSetCurrent(made);
        return made;
    }();
    return config;
}

std::vector<std::filesystem::path> fontPlaces() {
    const ConfigPtr config{FcInitLoadConfig()};
    std::vector<std::filesystem::path> files;
    take(FcConfigGetConfigFiles(config.get()), files);
    std::vector<std::filesystem::path> places{TESSARY_FONT_DIR};
    for (const auto& file : files) {
        places.push_back(file.parent_path());  // listed before its files are read
        places.push_back(file);                // may be a link to somewhere else
    }
    take(FcConfigGetConfigDirs(config.get()), places);
    take(FcConfigGetFontDirs(config.get()), places);
    take(FcConfigGetCacheDirs(config.get()), places);
    return places;
}

}  // namespace tessary::drawing
