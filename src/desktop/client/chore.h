// A program that is run to its end while the windows go on.
//
//     Chore chore;
//     chore.start({.words = {"tessary-widgets-feed", "alarms", "--json"}},
//                 [this](const Chore::Outcome& how) -> Chore::Next {
//                     return [this, read = offersOf(Pinnable::alarm, how)] { show(read); };
//                 });
//
// There is one at a time, and none any more once this is gone.
#pragma once

#include <functional>
#include <memory>

#include "platform/foundation/result.h"
#include "platform/system/child.h"

namespace tessary::client {

class Chore {
public:
    using Outcome = foundation::Result<system::Ended, system::ChildFault>;
    using Next = std::function<void()>;

    Chore() = default;
    Chore(const Chore&) = delete;
    Chore& operator=(const Chore&) = delete;
    ~Chore() { cancel(); }

    /// Calls off the one before. `understand` is called in a thread of its own, where much can be
    /// read without a window that stalls; what it returns is called from the main loop.
    void start(system::Errand errand, const std::function<Next(const Outcome&)>& understand);

    /// Ends the program by force; nothing of it is told any more.
    void cancel();

    bool running() const { return run_ != nullptr; }

private:
    struct Run;
    std::shared_ptr<Run> run_{};
};

}  // namespace tessary::client
