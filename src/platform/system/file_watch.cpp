#include "platform/system/file_watch.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstring>
#include <deque>
#include <poll.h>
#include <stdexcept>
#include <sys/inotify.h>
#include <system_error>
#include <thread>
#include <unistd.h>

namespace tessary::system {

namespace fs = std::filesystem;

namespace {

constexpr std::uint32_t changes = IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_MODIFY |
                                  IN_CLOSE_WRITE | IN_ATTRIB | IN_DELETE_SELF | IN_MOVE_SELF;
/// These concern the folder itself, or all of them.
constexpr std::uint32_t wholeFolder =
    IN_DELETE_SELF | IN_MOVE_SELF | IN_IGNORED | IN_UNMOUNT | IN_Q_OVERFLOW;

volatile std::sig_atomic_t endAsked = 0;

/// Holds the two signals back, so that none comes between the question and the wait.
class HeldSignals {
public:
    HeldSignals() {
        sigset_t ends;
        sigemptyset(&ends);
        sigaddset(&ends, SIGINT);
        sigaddset(&ends, SIGTERM);
        ::pthread_sigmask(SIG_BLOCK, &ends, &former_);
    }
    HeldSignals(const HeldSignals&) = delete;
    HeldSignals& operator=(const HeldSignals&) = delete;
    ~HeldSignals() { ::pthread_sigmask(SIG_SETMASK, &former_, nullptr); }
    const sigset_t& former() const { return former_; }

private:
    sigset_t former_{};
};

std::runtime_error failure(const std::string& what, int error) {
    return std::runtime_error{"cannot watch " + what + ": " +
                              std::system_category().message(error)};
}

/// Puts a path's parts before those that are still to come.
void prepend(std::deque<fs::path>& parts, const fs::path& path) {
    const fs::path relative = path.relative_path();
    parts.insert(parts.begin(), relative.begin(), relative.end());
}

}  // namespace

void heedEndSignals() {
    endAsked = 0;
    struct sigaction action {};
    action.sa_handler = [](int) { endAsked = 1; };
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    for (const int signal : {SIGINT, SIGTERM}) ::sigaction(signal, &action, nullptr);
}

FileWatch::FileWatch(const std::vector<fs::path>& files)
    : queue_(::inotify_init1(IN_CLOEXEC | IN_NONBLOCK)) {
    if (queue_.number() < 0) throw failure("files", errno);
    for (const fs::path& file : files) follow(fs::absolute(file));
}

/// Goes down a path as the system does, links included. Each folder is watched before the name in
/// it is looked at.
void FileWatch::follow(const fs::path& file) {
    constexpr int mostLinks = 40;
    std::deque<fs::path> parts;
    prepend(parts, file);
    fs::path folder = "/";
    unseen_.clear();
    for (int links = 0; !parts.empty();) {
        const fs::path name = parts.front();
        parts.pop_front();
        watch(folder, name);
        std::error_code ignored;
        const fs::path next = name == ".." ? folder.parent_path() : folder / name;
        if (fs::symlink_status(next, ignored).type() != fs::file_type::symlink) {
            folder = next;
            continue;
        }
        if (++links > mostLinks) return;
        const fs::path target = fs::read_symlink(next, ignored);
        if (target.is_absolute()) folder = "/";
        prepend(parts, target);
    }
    if (!unseen_.empty()) throw failure(unseen_.string(), EACCES);
}

/// A folder that may be passed through but not be read cannot be watched; that is told only where
/// it is the last, because those above it rarely change.
void FileWatch::watch(const fs::path& folder, const fs::path& name) {
    const int number = ::inotify_add_watch(queue_.number(), folder.c_str(), changes | IN_ONLYDIR);
    if (number >= 0) {
        names_[number].insert(name.native());
        unseen_.clear();
    } else if (errno == EACCES) {
        unseen_ = folder;
    } else if (errno != ENOENT && errno != ENOTDIR) {
        throw failure(folder.string(), errno);
    }
}

/// Empties the queue; whether any of it matters.
bool FileWatch::takeEvents() {
    bool matters = false;
    alignas(inotify_event) std::array<char, 16384> room;
    for (;;) {
        const ssize_t length = ::read(queue_.number(), room.data(), room.size());
        if (length <= 0) return matters;
        for (const char* at = room.data(); at < room.data() + length;) {
            inotify_event event{};
            std::memcpy(&event, at, sizeof event);
            const char* name = at + sizeof event;
            matters |= (event.mask & wholeFolder) != 0 ||
                       (event.len > 0 && names_[event.wd].contains(name));
            at = name + event.len;
        }
    }
}

Woken FileWatch::wait() {
    constexpr std::chrono::milliseconds burst{50};
    const HeldSignals held;
    for (;;) {
        if (endAsked != 0) return Woken::end;
        // Standard output is asked for nothing but the news that its reader has gone.
        std::array<pollfd, 2> sources{{{queue_.number(), POLLIN, 0}, {STDOUT_FILENO, 0, 0}}};
        const int ready = ::ppoll(sources.data(), sources.size(), nullptr, &held.former());
        if (ready < 0 && errno != EINTR) throw failure("files", errno);
        if (ready <= 0) continue;
        if (sources[1].revents != 0) return Woken::readerGone;
        if (!takeEvents()) continue;
        std::this_thread::sleep_for(burst);
        return Woken::change;
    }
}

}  // namespace tessary::system
