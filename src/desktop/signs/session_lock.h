// Whether the user's session is locked, as logind tells it. Where there is no logind, it never is.
//
//     SessionLock lock{[](bool locked) { ... }};
#pragma once

#include <functional>
#include <memory>

namespace tessary::signs {

class SessionLock {
public:
    /// `changed` is called from GLib's main loop each time the session is locked or unlocked, and
    /// once it is known that it was locked from the start.
    explicit SessionLock(std::function<void(bool locked)> changed);
    SessionLock(const SessionLock&) = delete;
    SessionLock& operator=(const SessionLock&) = delete;
    ~SessionLock();

private:
    struct Listener;
    std::shared_ptr<Listener> listener_;
};

}  // namespace tessary::signs
