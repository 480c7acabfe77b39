// News of paths (platform/system/path_watch.h) from GLib's main loop, a burst of changes at a time.
//
//     PathWatch files{{container / "widgets/*.json"}, {.changed = [] { askForNewTimelines(); }}};
//     PathWatch zone{{"/etc/localtime"}, {.changed = [] { startAnew(); }}};
#pragma once

#include <filesystem>
#include <functional>
#include <vector>

#include "desktop/glib/timer.h"
#include "platform/system/path_watch.h"

namespace tessary::signs {

class PathWatch {
public:
    /// Both are called from GLib's main loop.
    struct Events {
        std::function<void()> stirring{};  ///< a burst of changes has begun; may be left out,
        std::function<void()> changed{};   ///< and is over
    };

    /// The paths are absolute; the last name of one may be `*` and what names there have to end
    /// with. Throws std::runtime_error where the system has no watch to give.
    PathWatch(std::vector<std::filesystem::path> paths, Events events);
    PathWatch(const PathWatch&) = delete;
    PathWatch& operator=(const PathWatch&) = delete;
    ~PathWatch();

private:
    void takeEvents();

    system::PathWatch watch_;
    Events events_;
    unsigned source_{};
    glib::Timer burst_{};
};

}  // namespace tessary::signs
