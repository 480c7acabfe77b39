// Notices as the desktop shows them.
//
//     Notifications notifications{{.open = start, .tell = complain}};
//     notifications.show(notice);               // as soon as somebody is there to show it
//     poll(notifications.connection().wanted().events);
//     notifications.process();                  // a click on it opens its link
//
// Nobody is waited for. What could not be shown is tried again when it is tended, as it stands by
// then: a notice of the same matter takes its place. Whoever shows them may come and go.
#pragma once

#include <cstdint>
#include <functional>
#include <list>
#include <optional>
#include <string>

#include "feed/bus/connection.h"
#include "feed/notices/notices.h"

namespace tessary::bus {

class Notifications {
public:
    struct Click {
        std::string link{};
        std::string token{};  ///< lets what is opened come to the front; may be empty
    };
    struct Outside {
        std::function<void(const Click& click)> open{};
        /// Why nothing is shown; an empty text says that all is well.
        std::function<void(const std::string& fault)> tell{};
    };

    explicit Notifications(Outside outside) : outside_(std::move(outside)) {}
    Notifications(const Notifications&) = delete;

    void show(const notices::Notice& notice);
    /// Takes a matter's notice away.
    void close(const std::string& matter);

    void tend();
    void process();
    const Connection& connection() const { return connection_; }

private:
    struct Ears;
    struct Entry {
        notices::Notice notice{};
        std::uint32_t id{};  ///< of who shows it; 0: it is not shown
        bool waits{true};    ///< to be shown, or shown as it is now
        std::string token{};
    };
    struct Abilities {
        bool actions{};
        bool markup{};
    };
    using Entries = std::list<Entry>;

    Entries::iterator find(const std::string& matter);
    Entries::iterator find(std::uint32_t id);
    void listen();
    void advance();
    void askAbilities();
    void send(const Entry& entry);
    void withdraw(std::uint32_t id);
    void sent(std::uint32_t id);
    void fail(const std::string& why);
    void forgetShown();

    Outside outside_;
    Connection connection_{Connection::Bus::session};
    Entries entries_{};  ///< the oldest first
    std::optional<Abilities> abilities_{};
    notices::Notice sending_{};
    Slot call_{};  ///< what is asked now
    Slot given_{}, invoked_{}, closed_{}, changed_{};
};

}  // namespace tessary::bus
