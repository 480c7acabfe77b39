// Hears from the system's bus that the machine wakes.
//
//     Sleep sleep{[&] { schedule.wake(now); }};
//     sleep.tend();                             // now and then: it may take a while to find a bus
//     poll(sleep.connection().wanted().events);
//     sleep.process();
#pragma once

#include <functional>

#include "feed/bus/connection.h"

namespace tessary::bus {

class Sleep {
public:
    explicit Sleep(std::function<void()> wakes) : wakes_(std::move(wakes)) {}
    Sleep(const Sleep&) = delete;

    void tend();
    void process();
    const Connection& connection() const { return connection_; }

private:
    struct Ears;
    std::function<void()> wakes_;
    Connection connection_{Connection::Bus::system};
    Slot listening_{};
};

}  // namespace tessary::bus
