// What the alarms widget looks like, in both sizes and every state.
//
// Pure functions of a display state and what is inherited: no file is read here, and no clock.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "alarms/alarms_provider.h"
#include "platform/views/view.h"
#include "platform/widgets/widget_configuration.h"

namespace tessary::alarms {

using views::Environment;
using views::View;

/// The widget's declaration; what it answers comes from `source`.
widgets::WidgetConfiguration alarmsConfiguration(const snapshot::Source& source);

/// The widget: its content, guarded while locked, on the background, with its link.
View alarmsWidget(AlarmsEntry entry);

/// The content for a display state, in either size.
struct AlarmsWidgetView {
    AlarmsDisplay display;

    View body(const Environment& environment) const;
    bool operator==(const AlarmsWidgetView&) const = default;
};

/// A notice about paused targets, and how current the data is.
struct Footer {
    std::int64_t watched{};
    std::int64_t paused{};
    Date updated{};
    bool stale{};

    View body(const Environment& environment) const;
    bool operator==(const Footer&) const = default;

private:
    View freshness(const Environment& environment) const;
};

/// The title, the count and the footer.
struct Summary {
    std::int64_t firing{};
    Footer footer{};

    View body(const Environment& environment) const;
    bool operator==(const Summary&) const = default;

private:
    View count(const locale::UserLocale& locale) const;
    View checkmark() const;
};

/// One alarm by name, and where it is.
struct AlarmRow {
    std::string name{};
    std::string place{};
    bool stale{};

    View body() const;
};

/// The first alarms, and how many more there are.
struct AlarmList {
    std::int64_t firing{};
    std::vector<AlarmRow> rows{};

    View body() const;

private:
    View unlisted() const;
    View listed() const;
};

}  // namespace tessary::alarms
