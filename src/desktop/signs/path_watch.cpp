#include "desktop/signs/path_watch.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <deque>
#include <glib-unix.h>
#include <stdexcept>
#include <string_view>
#include <sys/inotify.h>
#include <unistd.h>
#include <utility>

namespace tessary::signs {

namespace {

namespace fs = std::filesystem;

constexpr std::chrono::milliseconds burst{15};
constexpr unsigned comesOrGoes =
    IN_CREATE | IN_MOVED_FROM | IN_MOVED_TO | IN_DELETE | IN_DELETE_SELF | IN_MOVE_SELF | IN_ATTRIB;

/// How many folders are watched above the one that a file lies in.
constexpr std::size_t above = 2;

/// As many as Linux itself follows.
constexpr int mostLinks = 40;

bool fits(std::string_view wanted, std::string_view name) {
    return wanted.starts_with('*') ? name.ends_with(wanted.substr(1)) : name == wanted;
}

/// A file that is made is of interest once it has been written; a link to one at once.
bool isBeingMade(const fs::path& made) {
    std::error_code error;
    return fs::is_regular_file(fs::symlink_status(made, error)) &&
           fs::hard_link_count(made, error) == 1;
}

}  // namespace

PathWatch::PathWatch(fs::path path, Events events)
    : path_{std::move(path)},
      events_{std::move(events)},
      queue_{inotify_init1(IN_NONBLOCK | IN_CLOEXEC)} {
    if (queue_ < 0) throw std::runtime_error{"the system cannot watch files"};
    const auto call = [](int, GIOCondition, gpointer self) -> gboolean {
        static_cast<PathWatch*>(self)->takeEvents();
        return G_SOURCE_CONTINUE;
    };
    source_ = g_unix_fd_add(queue_, G_IO_IN, call, this);
    watchAll();
}

PathWatch::~PathWatch() {
    g_source_remove(source_);
    close(queue_);
}

/// Folders watched before stay as they are, unless others have taken their place.
void PathWatch::watchAll() {
    const auto before = std::exchange(folders_, {});
    watchWay(path_);
    for (const auto& [watch, folder] : before)
        if (!folders_.contains(watch)) inotify_rm_watch(queue_, watch);
}

/// Watches the last folders of the path, or the last that exists, and where links on it lie.
void PathWatch::watchWay(const fs::path& path) {
    std::deque<fs::path> ahead{path.begin(), path.end()};
    fs::path here;  // exists, and has no links in it
    std::error_code error;
    for (int links = 0; !ahead.empty() && links <= mostLinks;) {
        const auto name = ahead.front();
        ahead.pop_front();
        if (name.is_absolute() || name == "..") {
            here = name == ".." ? here.parent_path() : name;
            continue;
        }
        if (name.empty() || name == ".") continue;
        const auto status = fs::symlink_status(here / name, error);
        const bool isLink = fs::is_symlink(status);
        if (ahead.size() <= above || isLink || !fs::exists(status))
            watch(here, name, ahead.empty() ? comesOrGoes | IN_CLOSE_WRITE : comesOrGoes);
        if (isLink) {
            const auto target = fs::read_symlink(here / name, error);
            ahead.insert(ahead.begin(), target.begin(), target.end());
            ++links;
        } else if (!fs::exists(status)) {
            break;
        } else {
            here /= name;
        }
    }
    const auto last = path.filename().native();
    if (!last.starts_with('*')) return;
    const auto isLinked = [&last](const fs::directory_entry& file) {
        std::error_code unknown;
        return fits(last, file.path().filename().native()) && file.is_symlink(unknown);
    };
    for (fs::directory_iterator at{path.parent_path(), error}, end; !error && at != end;
         at.increment(error))
        if (isLinked(*at)) watchWay(at->path());
}

void PathWatch::watch(const fs::path& folder, const std::string& name, unsigned events) {
    // Two ways may lead to one folder, which has one watch.
    const int watch = inotify_add_watch(queue_, folder.c_str(), events | IN_ONLYDIR | IN_MASK_ADD);
    if (watch < 0) return;
    folders_[watch].path = folder;
    folders_[watch].names.push_back(name);
}

bool PathWatch::matters(int watch, unsigned events, const std::string& name) const {
    const auto known = folders_.find(watch);
    if (known == folders_.end()) return false;
    if (name.empty()) return true;  // the folder itself
    const auto& [path, names] = known->second;
    return std::ranges::any_of(names, [&](const auto& wanted) { return fits(wanted, name); }) &&
           !((events & IN_CREATE) != 0 && isBeingMade(path / name));
}

void PathWatch::takeEvents() {
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
            any = any || overflow || (!gone && matters(event.wd, event.mask, name));
            at += sizeof event + event.len;
        }
    if (!any) return;
    watchAll();
    if (burst_.running()) return;
    burst_.start(burst, [this] {
        watchAll();  // a folder made while its parent was being looked at
        events_.changed();
    });
    if (events_.stirring) events_.stirring();
}

}  // namespace tessary::signs
