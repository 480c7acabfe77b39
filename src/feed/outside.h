// What a running feed hears of the machine and says to it, between its rounds.
//
//     Outside outside{schedule, notes};
//     outside.begin();
//     outside.wait(events);                     // until a round is due, or something has come
//     outside.show(telling);                    // on the desktop
//
// None of it is needed: a feed without buses, networks and a service manager makes its rounds.
#pragma once

#include <poll.h>
#include <span>
#include <string>

#include "feed/bus/notifications.h"
#include "feed/bus/sleep.h"
#include "feed/notes.h"
#include "feed/notices/notices.h"
#include "feed/rounds/schedule.h"
#include "feed/service_manager.h"
#include "feed/signs/network.h"
#include "feed/signs/time_jumps.h"

namespace tessary::feed {

/// Both have to outlive it.
class Outside {
public:
    Outside(rounds::Schedule& schedule, Notes& notes);

    /// The service manager is told that the feed is up.
    void begin();
    /// Tells the schedule what has come. The events are waited for as well.
    void wait(std::span<pollfd> events);
    void show(const notices::Telling& telling);
    /// After a round: how things stand, and whatever could not be done before is tried again.
    void tend(const std::string& status);

private:
    double patience() const;

    rounds::Schedule& schedule_;
    ServiceManager manager_{};
    signs::Network network_{};
    signs::TimeJumps jumps_{};
    bus::Sleep sleep_;
    bus::Notifications notifications_;
};

}  // namespace tessary::feed
