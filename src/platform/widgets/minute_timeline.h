// The timeline that every widget of the system answers with.
#pragma once

#include "platform/widgets/timeline.h"

namespace tessary::widgets {

/// Five entries, at `start` and each minute after it, made by `entryAt(date)`; to be asked again a
/// minute after the last.
template <class EntryAt>
auto minuteTimeline(Date start, const EntryAt& entryAt) {
    constexpr int entries = 5;
    constexpr double spacing = 60;       // seconds
    constexpr double reloadDelay = 300;  // seconds
    Timeline<decltype(entryAt(start))> timeline;
    timeline.entries.reserve(entries);
    for (int i = 0; i < entries; ++i) timeline.entries.push_back(entryAt(start + i * spacing));
    timeline.policy = {start + reloadDelay};
    return timeline;
}

}  // namespace tessary::widgets
