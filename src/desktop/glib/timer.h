// A call that comes later, from GLib's main loop.
//
//     Timer timer;
//     timer.start(30ms, [] { look(); });    // once; starting anew forgets the earlier call
#pragma once

#include <chrono>
#include <functional>

namespace tessary::glib {

/// One call after a while in which the machine is awake.
class Timer {
public:
    Timer() = default;
    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;
    ~Timer() { cancel(); }

    void start(std::chrono::milliseconds after, std::function<void()> due);
    void cancel();
    bool running() const { return source_ != 0; }

private:
    unsigned source_{};
    std::function<void()> due_{};
};

}  // namespace tessary::glib
