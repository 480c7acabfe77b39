#include "shell/tessary_widgets.h"

#include <gtest/gtest.h>

namespace tessary::shell {
namespace {

using widgets::WidgetFamily;

TEST(TessaryWidgets, DeclaresItsWidgetsInOrder) {
    std::string table;
    for (const WidgetConfiguration& widget : TessaryWidgets{}.body()) {
        table +=
            "\n" + widget.kind + " | " +
            (widget.intent ? widget.intent->title + ", " + widget.intent->entityType : "static") +
            " | " + widget.displayName + " | " + widget.text + " |";
        for (const auto family : widget.families)
            table += " " + std::string{foundation::name(family)};
    }
    EXPECT_EQ(table,
              R"(
com.tessary.desktop.widgets.alarms | static | Alarms firing | )"
              R"(CloudWatch alarms in ALARM across the profiles Tessary watches. | )"
              R"(systemSmall systemMedium
com.tessary.desktop.widgets.metric | Metric, Pinned metric | CloudWatch metric | )"
              R"(A metric you pinned in Tessary: its latest value and recent hours. | )"
              R"(systemSmall systemMedium
com.tessary.desktop.widgets.alarm | Alarm, Pinned alarm | CloudWatch alarm | One alarm you pinned in Tessary: )"
              R"(its state and its metric against the threshold. | systemSmall systemMedium)");
}

}  // namespace
}  // namespace tessary::shell
