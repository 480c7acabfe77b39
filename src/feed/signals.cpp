#include "feed/signals.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace tessary::feed {

namespace {

constexpr std::array ending{SIGTERM, SIGINT};

std::atomic<bool> hasCome{false};
std::atomic<int> bell{-1};  ///< what makes the descriptor readable

void take(int) {
    const int before = errno;
    hasCome = true;
    [[maybe_unused]] const auto written = ::write(bell, "", 1);
    errno = before;
}

}  // namespace

EndSignals::EndSignals() {
    std::array<int, 2> ends{-1, -1};
    if (::pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) == 0) {
        reading_ = system::Descriptor{ends[0]};
        writing_ = system::Descriptor{ends[1]};
    }
    bell = writing_.number();
    struct sigaction action {};
    action.sa_handler = take;  // without SA_RESTART: what waits for an answer looks up
    for (const int signal : ending) ::sigaction(signal, &action, nullptr);
}

EndSignals::~EndSignals() {
    for (const int signal : ending) std::signal(signal, SIG_DFL);
    bell = -1;
}

bool EndSignals::came() { return hasCome; }

}  // namespace tessary::feed
