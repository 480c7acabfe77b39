// What Pango would have done on threads of its own: looking fonts up. It is done by whoever waits
// for it instead, so that setting type takes no thread, in a process that may not start any,
// either.
#pragma once

namespace tessary::drawing {

/// Does what this thread has been left to do.
void finishPangosWork();

}  // namespace tessary::drawing
