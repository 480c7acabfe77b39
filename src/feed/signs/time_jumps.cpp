#include "feed/signs/time_jumps.h"

#include <cmath>
#include <cstdint>
#include <ctime>
#include <sys/timerfd.h>
#include <unistd.h>
#include <utility>

namespace tessary::signs {

namespace {

double secondsOf(clockid_t clock) {
    timespec time{};
    ::clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

}  // namespace

double secondsAhead() { return secondsOf(CLOCK_REALTIME) - secondsOf(CLOCK_MONOTONIC); }

double wakefulSeconds() { return secondsOf(CLOCK_BOOTTIME); }

TimeJumps::TimeJumps(std::function<double()> ahead)
    : timer_(::timerfd_create(CLOCK_REALTIME, TFD_NONBLOCK | TFD_CLOEXEC)),
      ahead_(std::move(ahead)),
      before_(ahead_()) {
    arm();
}

bool TimeJumps::haveCome() {
    std::uint64_t expirations = 0;
    [[maybe_unused]] const auto count = ::read(descriptor(), &expirations, sizeof expirations);
    arm();
    constexpr double step = 5;
    const double now = ahead_();
    return std::abs(now - std::exchange(before_, now)) > step;
}

/// For a moment that never comes: what is waited for is that it be cancelled.
void TimeJumps::arm() const {
    itimerspec never{};
    never.it_value.tv_sec = std::int64_t{1} << 40U;
    ::timerfd_settime(descriptor(), TFD_TIMER_ABSTIME | TFD_TIMER_CANCEL_ON_SET, &never, nullptr);
}

}  // namespace tessary::signs
