// The monitors that there are, and news of them.
//
//     MonitorWatch watch{[] { arrange(monitors()); }};
#pragma once

#include <functional>
#include <list>
#include <vector>

#include "desktop/glib/connect.h"
#include "desktop/places/placement.h"

namespace tessary::windows {

/// The monitors of the open display, in its own order but for the primary one, which comes first.
/// There is always one: where the display has none at the moment, one without a name.
std::vector<places::Monitor> monitors();

class MonitorWatch {
public:
    /// `changed` is called from GLib's main loop when a monitor comes, goes or becomes another, and
    /// when panels take or leave room (on Wayland the compositor sees to that by itself).
    explicit MonitorWatch(std::function<void()> changed);
    MonitorWatch(const MonitorWatch&) = delete;
    MonitorWatch& operator=(const MonitorWatch&) = delete;
    ~MonitorWatch();

private:
    std::function<void()> changed_;
    std::list<glib::Connection> connections_{};
};

}  // namespace tessary::windows
