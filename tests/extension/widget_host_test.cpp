#include "extension/widget_host.h"

#include <gtest/gtest.h>

#include "support/container.h"

namespace tessary::extension {
namespace {

TEST(WidgetHost, PutsARequestIntoTheSurroundingsItAsksFor) {
    const TemporaryFolder folder;
    const auto info = folder.write("info.json", R"({"TessaryAppGroup": "T1.x"})");
    setVariable("XDG_DATA_HOME", "/data");
    const auto groupAndContainer = [](const RequestOptions& options) {
        const auto made = surroundingsFor(options);
        return made.information("TessaryAppGroup").value_or("none") + " " +
               made.container("T1.x").value_or("none").string();
    };
    EXPECT_EQ(groupAndContainer({.info = info}), "T1.x /data/group-containers/T1.x");
    EXPECT_EQ(groupAndContainer({.container = "/c"}), "com.tessary.desktop /c");
    EXPECT_EQ(groupAndContainer({.container = "/c", .info = info}), "T1.x /c");
    EXPECT_EQ(groupAndContainer({.container = "/c", .info = folder / "missing"}), "none /c");

    EXPECT_EQ(surroundingsFor({.at = exampleNow}).clock(), exampleNow);
    EXPECT_GT(surroundingsFor({}).clock(), exampleNow);
}

}  // namespace
}  // namespace tessary::extension
