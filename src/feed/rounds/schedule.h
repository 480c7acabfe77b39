// When the next round is due: every interval, and sooner where the world outside has changed.
//
//     Schedule schedule{now};
//     schedule.begin(now, 60);                  // due in a minute
//     schedule.wake(now + 10);                  // due in 13 seconds: the machine has slept
//
// Times are seconds of a clock that goes on while the machine sleeps. What comes within a few
// seconds is one sign: a machine that wakes sets its clock, tells of it and joins a network.
#pragma once

#include <limits>

namespace tessary::rounds {

class Schedule {
public:
    explicit Schedule(double first) : due_(first) {}

    double due() const { return due_; }

    void begin(double now, double interval);
    void end(double now, bool hasFailures);

    /// The machine has slept, or its clock was set: one round, whatever else tells of it within a
    /// minute.
    void wake(double now);
    /// There is a network again: where the last round had failures, they are tried again. A network
    /// that comes and goes, or does not help, is believed less and less often.
    void connect(double now);
    /// Something else is to be asked.
    void hasten(double now);

private:
    static constexpr double firstPause = 30;

    double due_;
    double asleepUntil_{-std::numeric_limits<double>::infinity()};  ///< further signs are the same
    double believedFrom_{asleepUntil_};                             ///< a network, the next time
    double pause_{firstPause};
    bool isRetry_{};  ///< what is due, or under way, is so because of a network
    bool hasFailures_{};
};

}  // namespace tessary::rounds
