// What the alarms widget looks like, in both sizes and every state.
//
// Pure functions of an entry and a family: no file is read here, and no clock.
#pragma once

#include <string>

#include "alarms/alarms_provider.h"
#include "platform/views/view.h"

namespace tessary::alarms {

using views::View;

/// The widget: its content, guarded while locked, on the background, with its link.
struct AlarmsWidgetEntryView {
    AlarmsEntry entry;

    View body() const;
    bool operator==(const AlarmsWidgetEntryView&) const = default;
};

/// The content for a display state and a size.
struct AlarmsWidgetView {
    AlarmsDisplay display;
    Date now{};
    bool medium{};

    View body() const;
};

/// The title, the count and the footer.
struct Summary {
    AlarmsDisplay::Watching state{};
    Date now{};

    View body() const;

private:
    View count() const;
    View checkmark() const;
};

/// A notice about paused targets, and how current the data is.
struct Footer {
    AlarmsDisplay::Watching state{};
    Date now{};

    View body() const;

private:
    View freshness() const;
};

/// The first alarms by name, and how many more there are.
struct AlarmList {
    AlarmsDisplay::Watching state{};

    View body() const;

private:
    View unlisted() const;
    View rows() const;
    View row(const Alarm& alarm) const;
};

/// A message that takes the whole widget.
struct Message {
    std::string symbol{};
    std::string title{};
    std::string detail{};

    View body() const;
};

/// Icon, 3 points, title, centred on each other.
struct CompactLabel {
    View body(const View& icon, const View& title) const;
};

}  // namespace tessary::alarms
