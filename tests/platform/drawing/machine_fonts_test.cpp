#include "platform/drawing/machine_fonts.h"

#include <algorithm>
#include <gtest/gtest.h>

#include "platform/drawing/pango_typesetter.h"
#include "platform/sandbox/confined.h"
#include "platform/sandbox/sandbox.h"
#include "support/fixtures.h"

namespace tessary::drawing {
namespace {

namespace fs = std::filesystem;

/// Which of a machine's files can be read behind the sandbox, where fontconfig is told of such a
/// folder by a file in the home folder.
std::string readable(const std::string& fontFolder) {
    const TemporaryFolder root;
    for (const char* folder : {"home", "home/fonts", "srv", "srv/fonts"}) {
        fs::create_directory(root / folder);
        fs::copy("/usr/share/fonts/opentype/inter/Inter-Regular.otf", root / folder / "a.otf");
        root.write(std::string{folder} + "/secret", "x");
    }
    const auto in = [&](const std::string& name) { return (root / name).string(); };
    root.write("home/fonts.conf", "<fontconfig><dir>" + in(fontFolder) + "</dir><cachedir>" +
                                      in("cache") + "</cachedir></fontconfig>");
    return sandbox::confined([&] {
        setVariable("HOME", in("home"));
        setVariable("FONTCONFIG_FILE", in("home/fonts.conf"));
        std::vector<fs::path> files;
        for (const auto& entry : fs::recursive_directory_iterator{in("")})
            if (entry.is_regular_file()) files.push_back(entry.path());
        std::ranges::sort(files);
        sandbox::enterSandbox({.readable = fontPlaces()});
        std::string names;
        for (const fs::path& file : files)
            if (!contents(file).empty()) names += file.native().substr(in("").size()) + " ";
        return names + (haveFonts() ? "" : "no fonts");
    });
}

TEST(MachineFonts, AreAllThatCanBeReadBehindTheSandbox) {
    EXPECT_EQ(readable("srv/fonts"), "srv/fonts/a.otf srv/fonts/secret ");
    EXPECT_EQ(readable("home/fonts"), "home/fonts/a.otf ");
    EXPECT_EQ(readable("home"), "home/a.otf home/fonts/a.otf ");
    EXPECT_EQ(readable(""),
              "home/a.otf home/fonts/a.otf srv/a.otf srv/fonts/a.otf "
              "srv/fonts/secret srv/secret ");
}

TEST(MachineFonts, AreMissedBeforeAnythingIsDrawnWithoutThem) {
    EXPECT_EQ(sandbox::confined([] {
                  sandbox::enterSandbox({.readable = std::vector<fs::path>{}});
                  try {
                      PangoTypesetter{"en_US"};
                      return std::string{"draws"};
                  } catch (const std::runtime_error& error) {
                      return std::string{error.what()};
                  }
              }),
              "no font can be read, neither in /usr/share/fonts/opentype/inter nor of those that "
              "fontconfig lists");
}

}  // namespace
}  // namespace tessary::drawing
