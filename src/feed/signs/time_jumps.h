// Hears that the machine's clock has jumped: it was set, or the machine has slept.
//
//     TimeJumps jumps;
//     poll(jumps.descriptor());
//     if (jumps.haveCome()) ...
#pragma once

#include <functional>

#include "platform/system/files.h"

namespace tessary::signs {

/// Seconds of a clock that nobody sets and that goes on while the machine sleeps.
double wakefulSeconds();

/// By how many the time of day leads a clock that stands while the machine sleeps.
double secondsAhead();

class TimeJumps {
public:
    explicit TimeJumps(std::function<double()> ahead = secondsAhead);

    /// Becomes readable when the clock was set. Negative where the system tells nobody.
    int descriptor() const { return timer_.number(); }
    /// Takes it in; whether it was by more than a few seconds, as clocks that are kept in step are
    /// not.
    bool haveCome();

private:
    void arm() const;

    system::Descriptor timer_;
    std::function<double()> ahead_;
    double before_;
};

}  // namespace tessary::signs
