#include "desktop/container_watch.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <filesystem>
#include <glib-unix.h>
#include <stdexcept>
#include <string_view>
#include <sys/inotify.h>
#include <unistd.h>
#include <utility>

namespace tessary::desktop {

namespace {

constexpr std::chrono::milliseconds burst{30};
constexpr unsigned comesOrGoes =
    IN_MOVED_FROM | IN_MOVED_TO | IN_DELETE | IN_DELETE_SELF | IN_MOVE_SELF | IN_ATTRIB;
// A file that is made is of interest once it has been written.
constexpr unsigned ofFiles = comesOrGoes | IN_CLOSE_WRITE | IN_ONLYDIR;
constexpr unsigned ofFolders = comesOrGoes | IN_CREATE | IN_ONLYDIR;

/// How many folders are watched above the last: the container and where it lies.
constexpr std::size_t above = 2;

}  // namespace

ContainerWatch::ContainerWatch(const std::string& container, std::function<void()> changed)
    : changed_{std::move(changed)}, queue_{inotify_init1(IN_NONBLOCK | IN_CLOEXEC)} {
    if (queue_ < 0) throw std::runtime_error{"the system cannot watch files"};
    std::filesystem::path folder;
    for (const auto& name : std::filesystem::path{container} / "widgets")
        if (!name.empty()) path_.push_back(folder /= name);
    const auto call = [](int, GIOCondition, gpointer self) -> gboolean {
        static_cast<ContainerWatch*>(self)->takeEvents();
        return G_SOURCE_CONTINUE;
    };
    source_ = g_unix_fd_add(queue_, G_IO_IN, call, this);
    watchFolders();
}

ContainerWatch::~ContainerWatch() {
    g_source_remove(source_);
    close(queue_);
}

/// Watches the last folders of the path that exist; those watched before stay as they are, unless
/// their place has been taken by others.
void ContainerWatch::watchFolders() {
    const auto before = std::exchange(nameWithin_, {});
    std::size_t found = 0;
    for (std::size_t i = path_.size(); i-- > 0 && (found == 0 || i + above + 1 >= path_.size());) {
        const bool last = i + 1 == path_.size();
        const int watch = inotify_add_watch(queue_, path_[i].c_str(), last ? ofFiles : ofFolders);
        if (watch < 0) continue;
        ++found;
        nameWithin_[watch] = last ? "" : std::filesystem::path{path_[i + 1]}.filename().string();
    }
    for (const auto& [watch, name] : before)
        if (!nameWithin_.contains(watch)) inotify_rm_watch(queue_, watch);
}

bool ContainerWatch::matters(int watch, const char* name) const {
    const auto known = nameWithin_.find(watch);
    if (known == nameWithin_.end()) return false;
    if (*name == '\0') return true;  // the folder itself
    const std::string_view changed{name};
    return known->second.empty() ? changed.ends_with(".json") : changed == known->second;
}

void ContainerWatch::takeEvents() {
    alignas(inotify_event) std::array<char, 4096> buffer;
    bool any = false;
    for (ssize_t size; (size = read(queue_, buffer.data(), buffer.size())) > 0;)
        for (const char* at = buffer.data(); at < buffer.data() + size;) {
            inotify_event event;
            std::copy_n(at, sizeof event, reinterpret_cast<char*>(&event));
            const char* name = event.len != 0 ? at + sizeof event : "";
            // A watch that is no more is told of after the reason, which has counted already.
            const bool overflow = (event.mask & IN_Q_OVERFLOW) != 0;
            const bool gone = (event.mask & IN_IGNORED) != 0;
            any = any || overflow || (!gone && matters(event.wd, name));
            at += sizeof event + event.len;
        }
    if (!any) return;
    watchFolders();
    if (burst_.running()) return;
    burst_.start(burst, [this] {
        watchFolders();  // a folder made while its parent was being looked at
        changed_();
    });
}

}  // namespace tessary::desktop
