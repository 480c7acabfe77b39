// The signals that end the feed.
//
//     const EndSignals end;             // SIGTERM and SIGINT, from here on
//     poll(end.descriptor());           // readable once one has come
//     EndSignals::came()                // true
#pragma once

#include "platform/system/files.h"

namespace tessary::feed {

/// One at a time.
class EndSignals {
public:
    EndSignals();
    EndSignals(const EndSignals&) = delete;
    ~EndSignals();

    int descriptor() const { return reading_.number(); }
    static bool came();

private:
    system::Descriptor reading_{}, writing_{};
};

}  // namespace tessary::feed
