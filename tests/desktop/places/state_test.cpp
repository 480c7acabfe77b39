#include "desktop/places/state.h"

#include <gtest/gtest.h>

#include "support/golden.h"

namespace tessary::places {

namespace fs = std::filesystem;

/// A case is a file's text; it gives what is understood, and what is written of that.
TEST(State, ComesBackAsItWasSavedOrIsSetAside) {
    const TemporaryFolder folder;
    const std::string file = folder / "config/desktop.json";
    EXPECT_TRUE(loadWidgets(file)->empty());
    EXPECT_TRUE(saveWidgets(file, {}));
    EXPECT_FALSE(saveWidgets(file + "/desktop.json", {}));
    int setAside = 0;
    const auto aside = [&] { return file + ".unreadable-" + std::to_string(++setAside); };
    expectTranscript("states.txt", [&](const std::string& text) {
        std::ofstream{file} << unescaped(text);
        const auto widgets = loadWidgets(file).value();
        if (!fs::exists(file)) {
            EXPECT_EQ(contents(aside()), unescaped(text));
            return std::string{widgets.empty() ? "set aside" : "half understood"};
        }
        std::string told;
        for (const auto& [number, kind, family, pin, place] : widgets)
            told += std::to_string(number) + ' ' + kind + ", " + std::to_string(family.size.width) +
                    " wide, at " + describe(place) + '\n';
        EXPECT_TRUE(saveWidgets(file, widgets));
        EXPECT_EQ(*loadWidgets(file), widgets);
        return told + contents(file);
    });
    fs::remove(file);
    fs::create_directory(file);
    EXPECT_TRUE(loadWidgets(file)->empty());
    EXPECT_TRUE(fs::is_directory(aside()));
}

}  // namespace tessary::places
