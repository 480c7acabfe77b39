// The extension, as whoever has a question for it sees it.
//
//     extension.ask({.request = "list"}, [](const Reply& reply) { ... });
#pragma once

#include <functional>

#include "desktop/client/messages.h"

namespace tessary::client {

class Extension {
public:
    using Answer = std::function<void(const Reply&)>;

    virtual ~Extension() = default;

    /// Questions are answered in order, never from within this call.
    virtual void ask(const Request& request, Answer answer) = 0;

    /// For questions that are about to come.
    virtual void prepare() = 0;

    /// Has what is asked from now on answered for that time zone. Where it has no name, by a new
    /// process, also what is still unanswered: a process reads the machine's zone at its start.
    virtual void moveTo(const std::optional<std::string>& timeZone) = 0;
};

}  // namespace tessary::client
