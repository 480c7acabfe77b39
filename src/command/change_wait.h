// Waiting at a terminal or in a pipeline until files change, or until nobody wants to know.
//
//     heedEndSignals();
//     for (;;) {
//         system::PathWatch watch{files};      // before looking: what changes meanwhile is not missed
//         look(files);
//         if (waitForChange(watch) != Woken::change) break;
//     }
#pragma once

#include "platform/system/path_watch.h"

namespace tessary::command {

/// From now on the first SIGINT or SIGTERM asks for the end instead of ending the process; a second
/// one ends it.
void heedEndSignals();

enum class Woken {
    change,      ///< a file, or a folder or link on the way to one, has changed
    end,         ///< a signal asked for the end
    readerGone,  ///< nobody reads standard output any more
};

/// Waits for the first change, and a twentieth of a second more for those that come with it.
Woken waitForChange(system::PathWatch& watch);

}  // namespace tessary::command
