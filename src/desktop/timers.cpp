#include "desktop/timers.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdint>
#include <glib-unix.h>
#include <stdexcept>
#include <sys/timerfd.h>
#include <unistd.h>
#include <utility>

namespace tessary::desktop {

double wallClock() { return static_cast<double>(g_get_real_time()) / G_USEC_PER_SEC; }

void Timer::start(std::chrono::milliseconds after, std::function<void()> due) {
    cancel();
    due_ = std::move(due);
    const auto call = [](gpointer self) -> gboolean {
        auto& timer = *static_cast<Timer*>(self);
        timer.source_ = 0;
        std::exchange(timer.due_, nullptr)();  // may start the timer anew, or end it
        return G_SOURCE_REMOVE;
    };
    source_ = g_timeout_add(static_cast<guint>(after.count()), call, this);
}

void Timer::cancel() {
    if (source_ != 0) g_source_remove(source_);
    source_ = 0;
    due_ = nullptr;
}

WallAlarm::WallAlarm(std::function<void()> due)
    : timer_{timerfd_create(CLOCK_REALTIME, TFD_NONBLOCK | TFD_CLOEXEC)}, due_{std::move(due)} {
    if (timer_ < 0) throw std::runtime_error{"the system gives no timer"};
    const auto call = [](int timer, GIOCondition, gpointer self) -> gboolean {
        // The count is of no interest; reading it, or the news that the clock was set, makes the
        // descriptor quiet again.
        std::uint64_t count{};
        if (read(timer, &count, sizeof count) >= 0 || errno == ECANCELED)
            static_cast<WallAlarm*>(self)->due_();
        return G_SOURCE_CONTINUE;
    };
    source_ = g_unix_fd_add(timer_, G_IO_IN, call, this);
}

WallAlarm::~WallAlarm() {
    g_source_remove(source_);
    close(timer_);
}

void WallAlarm::set(double moment) const {
    // A time of zero would stop the timer; what is far beyond any calendar is none to wait for.
    const double clamped = std::clamp(moment, 1.0, 1e11);
    const double whole = std::floor(clamped);
    itimerspec when{};
    when.it_value.tv_sec = static_cast<time_t>(whole);
    when.it_value.tv_nsec = static_cast<long>((clamped - whole) * 1e9);
    timerfd_settime(timer_, TFD_TIMER_ABSTIME | TFD_TIMER_CANCEL_ON_SET, &when, nullptr);
}

}  // namespace tessary::desktop
