// Sees when the files that the widgets read may have changed, without looking at them.
//
//     ContainerWatch watch{container, [] { askForNewTimelines(); }};
//
// A file written, replaced by a rename or removed in the container's folder `widgets` counts, and
// so does that folder, or the container, being made, moved or removed. Nothing of it need exist.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "desktop/timers.h"

namespace tessary::desktop {

class ContainerWatch {
public:
    /// `changed` is called from GLib's main loop, once for a burst of changes. The container is an
    /// absolute path. Throws std::runtime_error where the system has no watch to give.
    ContainerWatch(const std::string& container, std::function<void()> changed);
    ContainerWatch(const ContainerWatch&) = delete;
    ContainerWatch& operator=(const ContainerWatch&) = delete;
    ~ContainerWatch();

private:
    void watchFolders();
    void takeEvents();
    bool matters(int watch, const char* name) const;

    std::vector<std::string> path_{};  ///< from the root down to the folder `widgets`
    std::function<void()> changed_{};
    int queue_{-1};
    unsigned source_{};
    std::map<int, std::string> nameWithin_{};  ///< by watch: what matters there; empty for files
    Timer burst_{};
};

}  // namespace tessary::desktop
