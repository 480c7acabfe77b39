#include "feed/bus/sleep.h"

#include <systemd/sd-bus.h>

namespace tessary::bus {

/// What the bus calls back.
struct Sleep::Ears {
    static int told(sd_bus_message* message, void* self, sd_bus_error*) {
        int begins = 1;
        if (::sd_bus_message_read(message, "b", &begins) >= 0 && begins == 0)
            static_cast<Sleep*>(self)->wakes_();
        return 0;
    }
};

void Sleep::tend() {
    if (!connection_.open()) return;
    sd_bus_slot* slot = nullptr;
    ::sd_bus_match_signal_async(connection_.get(), &slot, "org.freedesktop.login1",
                                "/org/freedesktop/login1", "org.freedesktop.login1.Manager",
                                "PrepareForSleep", Ears::told, nullptr, this);
    listening_.reset(slot);
}

void Sleep::process() {
    if (!connection_.isOpen() || connection_.process()) return;
    listening_.reset();
}

}  // namespace tessary::bus
