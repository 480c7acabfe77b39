#include "feed/bus/connection.h"

#include <cstdint>
#include <ctime>
#include <limits>
#include <systemd/sd-bus.h>

namespace tessary::bus {

void Connection::Closing::operator()(sd_bus* bus) const {
    ::sd_bus_close(bus);
    ::sd_bus_unref(bus);
}

void SlotClosing::operator()(sd_bus_slot* slot) const { ::sd_bus_slot_unref(slot); }

bool Connection::open() {
    if (isOpen()) return false;
    sd_bus* bus = nullptr;
    const int error =
        which_ == Bus::session ? ::sd_bus_open_user(&bus) : ::sd_bus_open_system(&bus);
    bus_.reset(error < 0 ? nullptr : bus);
    return isOpen();
}

bool Connection::process() {
    int done = 1;
    while (isOpen() && done > 0) done = ::sd_bus_process(get(), nullptr);
    if (done < 0) bus_.reset();
    return isOpen();
}

Connection::Wanted Connection::wanted() const {
    if (!isOpen()) return {};
    const int events = ::sd_bus_get_events(get());
    Wanted wanted{
        .events = {::sd_bus_get_fd(get()), static_cast<short>(events < 0 ? 0 : events), 0}};
    std::uint64_t due = 0;
    if (::sd_bus_get_timeout(get(), &due) < 0 || due == std::numeric_limits<std::uint64_t>::max())
        return wanted;
    timespec now{};
    ::clock_gettime(CLOCK_MONOTONIC, &now);
    wanted.seconds = static_cast<double>(due) / 1e6 - static_cast<double>(now.tv_sec) -
                     static_cast<double>(now.tv_nsec) / 1e9;
    return wanted;
}

}  // namespace tessary::bus
