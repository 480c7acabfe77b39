// Widgets that an extension may list: the three that there are, and one of another maker and size.
#pragma once

#include "desktop/places/kinds.h"

namespace tessary::places {

inline const protocol::Size smallSize{"systemSmall", "small", 164, 164};
inline const protocol::Size mediumSize{"systemMedium", "medium", 344, 164};
inline const protocol::Size largeSize{"systemLarge", "large", 344, 376};

inline const Kinds sampleKinds{
    {.kind = "com.tessary.desktop.widgets.alarms",
     .name = "alarms",
     .displayName = "Firing",
     .sizes = {smallSize, mediumSize}},
    {.kind = "com.tessary.desktop.widgets.metric",
     .name = "metric",
     .takesPin = true,
     .displayName = "metric",
     .sizes = {smallSize, mediumSize}},
    {.kind = "com.tessary.desktop.widgets.alarm",
     .name = "alarm",
     .takesPin = true,
     .displayName = "alarm",
     .sizes = {smallSize, mediumSize}},
    {.kind = "org.example.time", .name = "clock", .displayName = "Clock", .sizes = {largeSize}},
};

}  // namespace tessary::places
