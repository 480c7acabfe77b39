// What the feed tells the service manager that has started it, where one has.
//
//     ServiceManager manager;                   // nobody that is started from here on hears of it
//     manager.begin();                          // it is up
//     manager.tell("3 firing in 2 targets");
//     manager.live();                           // and not stuck, which has to be said time and again
//
// It is told of the end when this goes.
#pragma once

#include <optional>
#include <string>

#include "platform/system/files.h"

namespace tessary::feed {

class ServiceManager {
public:
    ServiceManager();
    ServiceManager(const ServiceManager&) = delete;
    ~ServiceManager();

    /// Whether a manager is there.
    bool isManaged() const { return socket_.number() >= 0; }
    void begin() const { send("READY=1"); }
    /// One line on how it does.
    void tell(const std::string& status);
    void live() const;
    /// Seconds from one sign of life to the next; none where none is waited for.
    std::optional<double> pause() const { return pause_; }

private:
    void send(const std::string& words) const;

    system::Descriptor socket_{};
    std::string address_{};  ///< as the system takes it
    std::optional<double> pause_{};
    std::string status_{};
};

}  // namespace tessary::feed
