// Sees when what lies at a path may have changed, without looking at it.
//
//     PathWatch files{container + "/widgets/*.json", {.changed = [] { askForNewTimelines(); }}};
//     PathWatch zone{"/etc/localtime", {.changed = [] { startAnew(); }}};
//
// A file written, replaced by a rename, linked or removed counts, and so do the folders that it
// lies in, or where that lies, being made, moved or removed. Links are followed: one on the way
// that is replaced counts, and so does the file that it leads to. Nothing of it need exist.
#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "desktop/glib/timer.h"

namespace tessary::signs {

class PathWatch {
public:
    /// Both are called from GLib's main loop.
    struct Events {
        std::function<void()> stirring{};  ///< a burst of changes has begun; may be left out,
        std::function<void()> changed{};   ///< and is over
    };

    /// The path is absolute; its last name may be `*` and what names there have to end with. Throws
    /// std::runtime_error where the system has no watch to give.
    PathWatch(std::filesystem::path path, Events events);
    PathWatch(const PathWatch&) = delete;
    PathWatch& operator=(const PathWatch&) = delete;
    ~PathWatch();

private:
    struct Folder {
        std::filesystem::path path{};
        std::vector<std::string> names{};  ///< what matters there
    };

    void watchAll();
    void watchWay(const std::filesystem::path& path);
    void watch(const std::filesystem::path& folder, const std::string& name, unsigned events);
    void takeEvents();
    bool matters(int watch, unsigned events, const std::string& name) const;

    std::filesystem::path path_;
    Events events_;
    int queue_{-1};
    unsigned source_{};
    std::map<int, Folder> folders_{};  ///< by watch
    glib::Timer burst_{};
};

}  // namespace tessary::signs
