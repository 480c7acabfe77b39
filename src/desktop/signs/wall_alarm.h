// A call at a time of day.
//
//     WallAlarm alarm{{.due = [] { look(); }, .clockSet = [] { askAnew(); }}};
//     alarm.set(1731772840);                // also when the machine slept through that moment
#pragma once

#include <functional>

#include "desktop/glib/timer.h"

namespace tessary::signs {

/// Seconds since 1970.
double wallClock();

/// A call at a time of day, also after sleep and after the clock has been set.
class WallAlarm {
public:
    /// Each has to be there and is called from the main loop.
    struct Events {
        std::function<void()> due{};
        /// The clock was set or the machine woke, which Linux tells alike, while a moment was set;
        /// that moment is still to come, or `due` is called for it afterwards.
        std::function<void()> clockSet{};
    };

    /// Throws std::runtime_error where the system has no timer to give.
    explicit WallAlarm(Events events);
    WallAlarm(const WallAlarm&) = delete;
    WallAlarm& operator=(const WallAlarm&) = delete;
    ~WallAlarm();

    /// One call at that moment, at once where it is past. Setting anew forgets the earlier moment.
    void set(double moment);

private:
    void wake();

    int timer_{-1};
    unsigned source_{};
    double moment_{};
    Events events_;
    glib::Timer news_{};
};

}  // namespace tessary::signs
