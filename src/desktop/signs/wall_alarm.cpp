#include "desktop/signs/wall_alarm.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdint>
#include <glib-unix.h>
#include <stdexcept>
#include <sys/timerfd.h>
#include <unistd.h>
#include <utility>

namespace tessary::signs {

double wallClock() { return static_cast<double>(g_get_real_time()) / G_USEC_PER_SEC; }

WallAlarm::WallAlarm(Events events)
    : timer_{timerfd_create(CLOCK_REALTIME, TFD_NONBLOCK | TFD_CLOEXEC)},
      events_{std::move(events)} {
    if (timer_ < 0) throw std::runtime_error{"the system gives no timer"};
    const auto call = [](int, GIOCondition, gpointer self) -> gboolean {
        static_cast<WallAlarm*>(self)->wake();
        return G_SOURCE_CONTINUE;
    };
    source_ = g_unix_fd_add(timer_, G_IO_IN, call, this);
}

WallAlarm::~WallAlarm() {
    g_source_remove(source_);
    close(timer_);
}

/// Reading the count, which is of no interest, or the news makes the descriptor quiet again.
void WallAlarm::wake() {
    std::uint64_t count{};
    if (read(timer_, &count, sizeof count) >= 0) return events_.due();
    if (errno != ECANCELED) return;
    set(moment_);
    events_.clockSet();
}

void WallAlarm::set(double moment) {
    moment_ = moment;
    // A time of zero would stop the timer; what is far beyond any calendar is none to wait for.
    const double clamped = std::clamp(moment, 1.0, 1e11);
    const double whole = std::floor(clamped);
    itimerspec when{};
    when.it_value.tv_sec = static_cast<time_t>(whole);
    when.it_value.tv_nsec = static_cast<long>((clamped - whole) * 1e9);
    constexpr int flags = TFD_TIMER_ABSTIME | TFD_TIMER_CANCEL_ON_SET;
    if (timerfd_settime(timer_, flags, &when, nullptr) == 0 || errno != ECANCELED) return;
    // News that nobody had read yet come once, from this call. Without them it is set as asked.
    timerfd_settime(timer_, flags, &when, nullptr);
    news_.start({}, [this] { events_.clockSet(); });
}

}  // namespace tessary::signs
