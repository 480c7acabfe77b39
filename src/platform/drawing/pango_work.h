// What Pango would have done on threads of its own: looking fonts up. It is done by whoever waits
// for it instead, so that setting type takes no thread, in a process that may not start any,
// either.
#pragma once

namespace tessary::drawing {

/// Does what this thread has been left to do.
void finishPangosWork();

/// Is there before a font map, so that what its end leaves to do is done.
struct PangosWork {
    PangosWork() = default;
    PangosWork(const PangosWork&) = delete;
    ~PangosWork() { finishPangosWork(); }
};

}  // namespace tessary::drawing
