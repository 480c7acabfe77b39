// A connection to one of the machine's buses, which may not be there, and may go at any time.
//
//     Connection bus{Connection::Bus::session};
//     if (bus.open()) sd_bus_call_method_async(bus.get(), ...);
//     const auto wanted = bus.wanted();         // what to wait for
//     bus.process();                            // calls back whoever waits for an answer
//
// Nothing here waits for anybody.
#pragma once

#include <memory>
#include <optional>
#include <poll.h>

struct sd_bus;
struct sd_bus_slot;

namespace tessary::bus {

class Connection {
public:
    enum class Bus { session, system };

    explicit Connection(Bus which) : which_(which) {}

    /// Opens one where none is; whether it has. Whoever is on the bus hears from it later.
    bool open();
    bool isOpen() const { return bus_ != nullptr; }

    /// Takes in what has come and sends what lies ready. False where that was the end of it, and it
    /// is closed.
    bool process();

    struct Wanted {
        pollfd events{-1, 0, 0};
        std::optional<double> seconds{};  ///< until something has to be done anyway
    };
    Wanted wanted() const;

    sd_bus* get() const { return bus_.get(); }

private:
    struct Closing {
        void operator()(sd_bus* bus) const;
    };
    Bus which_;
    std::unique_ptr<sd_bus, Closing> bus_{};
};

/// What is asked or listened to, and given up with this.
struct SlotClosing {
    void operator()(sd_bus_slot* slot) const;
};
using Slot = std::unique_ptr<sd_bus_slot, SlotClosing>;

}  // namespace tessary::bus
