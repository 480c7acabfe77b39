#include "platform/drawing/machine_fonts.h"

#include <algorithm>
#include <cstdlib>
#include <fontconfig/fontconfig.h>
#include <fstream>
#include <pango/pangoft2.h>
#include <set>
#include <string_view>

#include "platform/drawing/pango_work.h"
#include "platform/drawing/release.h"

namespace tessary::drawing {

namespace fs = std::filesystem;

namespace {

using PatternPtr = Owned<FcPattern, FcPatternDestroy>;

/// Fontconfig looks up who uses it when it first completes a pattern, and Pango whether fontconfig
/// is ready when it makes its first map, for all threads.
void lookUpTheRest() {
    FcDefaultSubstitute(PatternPtr{FcPatternCreate()}.get());
    const PangosWork work;
    const Owned<PangoFontMap, g_object_unref> map{pango_ft2_font_map_new()};
}

/// The files that fonts are in, a font at a time.
std::set<fs::path> fontFiles() {
    std::set<fs::path> files;
    for (const FcSetName name : {FcSetSystem, FcSetApplication}) {
        const FcFontSet* fonts = FcConfigGetFonts(machineFonts(), name);
        for (int i = 0; fonts != nullptr && i < fonts->nfont; ++i) {
            FcChar8* file = nullptr;
            if (FcPatternGetString(fonts->fonts[i], FC_FILE, 0, &file) == FcResultMatch)
                files.emplace(reinterpret_cast<const char*>(file));
        }
    }
    return files;
}

fs::path real(const fs::path& path) {
    std::error_code ignored;
    return fs::weakly_canonical(path, ignored);
}

bool contains(const fs::path& outer, const fs::path& inner) {
    return std::ranges::mismatch(outer, inner).in1 == outer.end();
}

}  // namespace

FcConfig* machineFonts() {
    static FcConfig* const config = [] {
        FcConfig* made = FcInitLoadConfigAndFonts();
        FcConfigAppFontAddDir(made, reinterpret_cast<const FcChar8*>(TESSARY_FONT_DIR));
        FcConfigSetCurrent(made);
        lookUpTheRest();
        return made;
    }();
    return config;
}

std::vector<fs::path> fontPlaces() {
    const char* const variable = std::getenv("HOME");
    const fs::path home = real(variable == nullptr ? "" : variable);
    std::set<fs::path> places{TESSARY_FONT_DIR, "/usr/share/libthai"};  // where Thai words end
    for (const fs::path& file : fontFiles()) {
        const fs::path folder = real(file).parent_path();
        const bool isApart = home.empty() || !(contains(home, folder) || contains(folder, home));
        places.insert(isApart ? folder : file);
    }
    return {places.begin(), places.end()};
}

foundation::Result<void> haveFonts() {
    const auto canBeRead = [](const fs::path& file) { return std::ifstream{file}.good(); };
    if (canBeRead(TESSARY_FONT_DIR "/Inter-Regular.otf")) return {};
    if (std::ranges::any_of(fontFiles(), canBeRead)) return {};
    return foundation::Fault{"no font can be read, neither in " TESSARY_FONT_DIR
                             " nor of those that fontconfig lists"};
}

}  // namespace tessary::drawing
