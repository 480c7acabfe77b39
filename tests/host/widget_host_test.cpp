#include "host/widget_host.h"

#include <gtest/gtest.h>

#include "support/container.h"

namespace tessary::host {
namespace {

using foundation::setVariable;
using foundation::Surroundings;

TEST(WidgetHost, PutsARequestIntoTheSurroundingsItAsksFor) {
    const foundation::TemporaryFolder folder;
    const auto info = folder.write("Info.plist",
                                   "<plist version=\"1.0\"><dict><key>TessaryAppGroup</key>"
                                   "<string>T1.x</string></dict></plist>");
    const auto group = [](const RequestOptions& options) {
        return surroundingsFor(options).information("TessaryAppGroup").value_or("none");
    };
    const auto container = [](const RequestOptions& options) {
        return surroundingsFor(options).container("T1.x").value_or("none").string();
    };
    setVariable("XDG_DATA_HOME", "/data");
    EXPECT_EQ(group({.info = info}), "T1.x");
    EXPECT_EQ(container({.info = info}), "/data/group-containers/T1.x");
    EXPECT_EQ(container({.container = "/c"}), "/c");
    EXPECT_EQ(group({.container = "/c"}), "com.tessary.desktop");
    EXPECT_EQ(group({.container = "/c", .info = info}), "T1.x");
    EXPECT_EQ(container({.container = "/c", .info = info}), "/c");
    EXPECT_EQ(group({.container = "/c", .info = folder / "missing"}), "none");
    EXPECT_EQ(group({.info = folder / "missing"}), "none");

    EXPECT_EQ(surroundingsFor({.at = foundation::Date{5}}).clock(), foundation::Date{5});
    EXPECT_GT(surroundingsFor({}).clock(), exampleNow);
}

TEST(WidgetHost, TakesLocaleAndZoneFromTheEnvironmentUnlessTheyAreGiven) {
    setVariable("LC_ALL", "fr_FR.UTF-8");
    setVariable("TZ", "Asia/Tokyo");
    const auto locale = [](const RequestOptions& options) {
        const foundation::UserLocale chosen = surroundingsFor(options).locale;
        return chosen.identifier + " " + chosen.timeZone;
    };
    EXPECT_EQ(locale({}), "fr_FR Asia/Tokyo");
    EXPECT_EQ(locale({.locale = "de_DE"}), "de_DE Asia/Tokyo");
    EXPECT_EQ(locale({.timeZone = "UTC"}), "fr_FR UTC");
    EXPECT_EQ(locale({.locale = "de_DE", .timeZone = "UTC"}), "de_DE UTC");
}

TEST(WidgetHost, HasItsCards) {
    EXPECT_EQ(surface(widgets::WidgetFamily::systemSmall, 3),
              (views::Surface{{164, 164}, {16, 16, 16, 16}, 22, 3}));
    EXPECT_EQ(surface(widgets::WidgetFamily::systemMedium, 1),
              (views::Surface{{344, 164}, {16, 16, 16, 16}, 22, 1}));
}

}  // namespace
}  // namespace tessary::host
