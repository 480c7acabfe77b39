#include "command/change_wait.h"

#include <array>
#include <chrono>
#include <csignal>
#include <poll.h>
#include <thread>
#include <unistd.h>

namespace tessary::command {

namespace {

volatile std::sig_atomic_t endAsked = 0;

/// Holds the two signals back, so that none comes between the question and the wait.
class HeldSignals {
public:
    HeldSignals() {
        sigset_t ends;
        sigemptyset(&ends);
        sigaddset(&ends, SIGINT);
        sigaddset(&ends, SIGTERM);
        ::pthread_sigmask(SIG_BLOCK, &ends, &former_);
    }
    HeldSignals(const HeldSignals&) = delete;
    HeldSignals& operator=(const HeldSignals&) = delete;
    ~HeldSignals() { ::pthread_sigmask(SIG_SETMASK, &former_, nullptr); }
    const sigset_t& former() const { return former_; }

private:
    sigset_t former_{};
};

}  // namespace

void heedEndSignals() {
    endAsked = 0;
    struct sigaction action {};
    action.sa_handler = [](int) { endAsked = 1; };
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    for (const int signal : {SIGINT, SIGTERM}) ::sigaction(signal, &action, nullptr);
}

Woken waitForChange(system::PathWatch& watch) {
    constexpr std::chrono::milliseconds burst{50};
    const HeldSignals held;
    for (;;) {
        if (endAsked != 0) return Woken::end;
        // Standard output is asked for nothing but the news that its reader has gone.
        std::array<pollfd, 2> sources{{{watch.descriptor(), POLLIN, 0}, {STDOUT_FILENO, 0, 0}}};
        if (::ppoll(sources.data(), sources.size(), nullptr, &held.former()) <= 0) continue;
        if (sources[1].revents != 0) return Woken::readerGone;
        if (!watch.takeEvents()) continue;
        std::this_thread::sleep_for(burst);
        return Woken::change;
    }
}

}  // namespace tessary::command
