#include "feed/rounds/schedule.h"

#include <algorithm>

namespace tessary::rounds {

namespace {

constexpr double settling = 3;  // seconds until a machine that woke has its network
constexpr double longestPause = 600;
constexpr double waking = 60;  // and until it tells of it no more

}  // namespace

void Schedule::begin(double now, double interval) { due_ = now + interval; }

void Schedule::end(double now, bool hasFailures) {
    hasFailures_ = hasFailures;
    if (!hasFailures) {
        pause_ = firstPause;
        believedFrom_ = now;
    } else if (isRetry_) {
        believedFrom_ = now + pause_;
        pause_ = std::min(2 * pause_, longestPause);
    }
    isRetry_ = false;
}

void Schedule::wake(double now) {
    if (now < asleepUntil_) return;
    asleepUntil_ = now + waking;
    due_ = now + settling;
}

void Schedule::connect(double now) {
    const double retry = std::max(now + settling, believedFrom_);
    if (!hasFailures_ || retry >= due_) return;
    due_ = retry;
    isRetry_ = true;
}

void Schedule::hasten(double now) { due_ = std::min(due_, now); }

}  // namespace tessary::rounds
