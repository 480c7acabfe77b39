#include "platform/system/path_watch.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <deque>
#include <limits>
#include <string_view>
#include <sys/inotify.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace tessary::system {

namespace {

namespace fs = std::filesystem;

constexpr unsigned comesOrGoes =
    IN_CREATE | IN_MOVED_FROM | IN_MOVED_TO | IN_DELETE | IN_DELETE_SELF | IN_MOVE_SELF | IN_ATTRIB;

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

foundation::Fault cannotWatch(const std::string& what, int error) {
    return {"cannot watch " + what + ": " + std::system_category().message(error)};
}

}  // namespace

PathWatch::PathWatch(std::vector<fs::path> paths, Reach reach)
    : paths_(std::move(paths)), reach_(reach), queue_(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
    for (fs::path& path : paths_) path = fs::absolute(path);
    if (queue_.number() < 0) sight_ = cannotWatch("files", errno);
    follow();
}

/// Folders watched before stay as they are, unless others have taken their place.
void PathWatch::follow() {
    if (queue_.number() < 0) return;
    sight_ = {};
    const auto before = std::exchange(folders_, {});
    for (const fs::path& path : paths_) followPath(path);
    for (const auto& [watch, folder] : before)
        if (!folders_.contains(watch)) ::inotify_rm_watch(queue_.number(), watch);
}

/// Goes down a path as the system does, links included, as far as it exists. Each folder is watched
/// before the name in it is looked at.
void PathWatch::followPath(const fs::path& path) {
    const std::size_t above = reach_ == Reach::all ? std::numeric_limits<std::size_t>::max() : 2;
    std::deque<fs::path> ahead{path.begin(), path.end()};
    fs::path here;  // exists, and has no links in it
    std::error_code error;
    hidden_.clear();
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
    if (!hidden_.empty()) sight_ = cannotWatch(hidden_.string(), EACCES);
    const auto last = path.filename().native();
    if (last.starts_with('*')) followLinksIn(path.parent_path(), last);
}

void PathWatch::followLinksIn(const fs::path& folder, const std::string& pattern) {
    std::error_code error;
    std::error_code unknown;
    for (fs::directory_iterator at{folder, error}, end; !error && at != end; at.increment(error))
        if (fits(pattern, at->path().filename().native()) && at->is_symlink(unknown))
            followPath(at->path());
}

/// Two ways may lead to one folder, which has one watch. A folder that may be passed through but
/// not be read cannot be watched; that is told only where it is the last.
void PathWatch::watch(const fs::path& folder, const std::string& name, unsigned events) {
    const int watch =
        ::inotify_add_watch(queue_.number(), folder.c_str(), events | IN_ONLYDIR | IN_MASK_ADD);
    if (watch >= 0) {
        hidden_.clear();
        folders_[watch].path = folder;
        folders_[watch].names.push_back(name);
    } else if (errno == EACCES) {
        hidden_ = folder;
    } else if (errno != ENOENT && errno != ENOTDIR) {
        sight_ = cannotWatch(folder.string(), errno);
    }
}

bool PathWatch::matters(int watch, unsigned events, const std::string& name) const {
    const auto known = folders_.find(watch);
    if (known == folders_.end()) return false;
    if (name.empty()) return true;  // the folder itself
    const auto& [path, names] = known->second;
    return std::ranges::any_of(names, [&](const auto& wanted) { return fits(wanted, name); }) &&
           !((events & IN_CREATE) != 0 && isBeingMade(path / name));
}

bool PathWatch::takeEvents() {
    alignas(inotify_event) std::array<char, 4096> room;
    bool any = false;
    for (ssize_t size = 0; (size = ::read(queue_.number(), room.data(), room.size())) > 0;)
        for (const char* at = room.data(); at < room.data() + size;) {
            inotify_event event{};
            std::memcpy(&event, at, sizeof event);
            const char* name = event.len != 0 ? at + sizeof event : "";
            // A watch that is no more is told of after the reason, which has counted already.
            const bool overflow = (event.mask & IN_Q_OVERFLOW) != 0;
            const bool gone = (event.mask & IN_IGNORED) != 0;
            any = any || overflow || (!gone && matters(event.wd, event.mask, name));
            at += sizeof event + event.len;
        }
    if (any) follow();
    return any;
}

}  // namespace tessary::system
