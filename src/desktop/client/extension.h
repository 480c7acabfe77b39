// The extension, as whoever has a question for it sees it.
//
//     extension.ask({.request = "list"}, [](const Reply& reply) { ... });
#pragma once

#include <functional>

#include "desktop/client/messages.h"

namespace tessary::client {

/// How long nothing good has come from the extension.
struct Trouble {
    int failures{};     ///< since the last good answer
    std::string why{};  ///< the last of them, a sentence
};

/// So many failures in a row, and whoever waits for an answer should be told.
inline constexpr int failuresToTell = 3;

class Extension {
public:
    using Answer = std::function<void(const Reply&)>;

    virtual ~Extension() = default;

    /// Questions are answered in order, never from within this call.
    virtual void ask(const Request& request, Answer answer) = 0;

    /// For questions that are about to come.
    virtual void prepare() = 0;

    /// Cuts the pause short in which nothing is asked after failures.
    virtual void hurry() = 0;

    /// Has what is asked from now on answered for that time zone. Where it has no name, by a new
    /// process, also what is still unanswered: a process reads the machine's zone at its start.
    virtual void moveTo(const std::optional<std::string>& timeZone) = 0;
};

}  // namespace tessary::client
