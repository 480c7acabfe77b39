#include "shell/tessary_widgets.h"

#include <gtest/gtest.h>

namespace tessary::shell {

TEST(TessaryWidgets, DeclaresItsWidgetsInOrder) {
    std::string table;
    for (const WidgetConfiguration& widget : TessaryWidgets{}.body()) {
        table += "\n" + widget.kind + ": ";
        table += widget.intent ? widget.intent->title + ", " + widget.intent->entityType : "static";
        table += "\n" + widget.displayName + ": " + widget.text + "\n";
        for (const auto family : widget.families)
            table += std::string{foundation::name(family)} + ' ';
    }
    EXPECT_EQ(table, R"(
com.tessary.desktop.widgets.alarms: static
Alarms firing: CloudWatch alarms in ALARM across the profiles Tessary watches.
systemSmall systemMedium 
com.tessary.desktop.widgets.metric: Metric, Pinned metric
CloudWatch metric: A metric you pinned in Tessary: its latest value and recent hours.
systemSmall systemMedium 
com.tessary.desktop.widgets.alarm: Alarm, Pinned alarm
CloudWatch alarm: One alarm you pinned in Tessary: its state and its metric against the threshold.
systemSmall systemMedium )");
}

}  // namespace tessary::shell
