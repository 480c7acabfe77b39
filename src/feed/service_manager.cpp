#include "feed/service_manager.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>
#include <unistd.h>
#include <utility>

#include "platform/foundation/numbers.h"

namespace tessary::feed {

namespace {

/// The variable's text, which is not in the environment any more.
std::string taken(const char* name) {
    const char* const value = std::getenv(name);
    std::string text = value == nullptr ? "" : value;
    ::unsetenv(name);
    return text;
}

/// Half of the time that the manager waits, of which it tells in microseconds.
std::optional<double> pauseOf(const std::string& microseconds, const std::string& process) {
    if (!process.empty() && process != std::to_string(::getpid())) return std::nullopt;
    const double time = std::atof(microseconds.c_str());
    return time > 0 ? std::optional{time / 2e6} : std::nullopt;
}

}  // namespace

ServiceManager::ServiceManager()
    : address_(taken("NOTIFY_SOCKET")),
      pause_(pauseOf(taken("WATCHDOG_USEC"), taken("WATCHDOG_PID"))) {
    if (!address_.starts_with('/') && !address_.starts_with('@')) return;
    if (address_.starts_with('@')) address_.front() = '\0';  // a name that is no file's
    socket_ = system::Descriptor{::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0)};
    const timeval most{.tv_sec = 1, .tv_usec = 0};  // that a manager is waited for to listen
    ::setsockopt(socket_.number(), SOL_SOCKET, SO_SNDTIMEO, &most, sizeof most);
}

ServiceManager::~ServiceManager() { send("STOPPING=1"); }

void ServiceManager::tell(const std::string& status) {
    if (std::exchange(status_, status) != status) send("STATUS=" + status);
}

void ServiceManager::live() const {
    if (pause_) send("WATCHDOG=1");
}

void ServiceManager::send(const std::string& words) const {
    if (!isManaged()) return;
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const auto length = std::min(address_.size(), sizeof address.sun_path);
    std::memcpy(address.sun_path, address_.data(), length);
    ::sendto(socket_.number(), words.data(), words.size(), MSG_NOSIGNAL,
             reinterpret_cast<const sockaddr*>(&address),
             static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + length));
}

}  // namespace tessary::feed
