#include "host/widget_lookup.h"

#include <gtest/gtest.h>

namespace tessary::host {

TEST(WidgetLookup, FindsByKindAndByShortName) {
    for (const std::string name : {"alarms", "alarm", "metric"}) {
        const std::string kind = "com.tessary.desktop.widgets." + name;
        EXPECT_EQ(findWidget(name)->kind, kind);
        EXPECT_EQ(findWidget(kind)->kind, kind);
    }
    for (const std::string_view word :
         {"", "Alarms", "alarm ", "widgets.alarm", ".alarm", "metrics"})
        EXPECT_FALSE(findWidget(word)) << word;
}

}  // namespace tessary::host
