#include "platform/sandbox/file_broker.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <optional>
#include <poll.h>
#include <string>
#include <string_view>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <system_error>
#include <unistd.h>

#include "platform/sandbox/sandbox.h"

namespace tessary::sandbox {

using foundation::Fault;
using system::Descriptor;

namespace {

// A request is a path. Its answer is a message of the bytes' count, and then the bytes in messages
// of their own; or one of `refusalMark` and a reason.
constexpr char refusalMark = '!';
constexpr std::size_t largestPart = std::size_t{64} << 10U;

bool send(int channel, std::string_view part) {
    return system::uninterrupted(
               [&] { return ::send(channel, part.data(), part.size(), MSG_NOSIGNAL); }) >= 0;
}

/// The length of the next message, or less than 1 when the other side is gone. Descriptors that
/// come beside it are dropped.
ssize_t receive(int channel, char* bytes, std::size_t size) {
    return system::uninterrupted([&] { return ::read(channel, bytes, size); });
}

std::string received(int channel, std::size_t longest) {
    std::string text(longest, '\0');
    text.resize(
        static_cast<std::size_t>(std::max<ssize_t>(receive(channel, text.data(), text.size()), 0)));
    return text;
}

void answer(int channel, const system::FileContents& contents) {
    if (!contents) {
        send(channel, refusalMark + contents.fault().message());
        return;
    }
    std::string_view rest = *contents;
    bool isHeard = send(channel, std::to_string(rest.size()));
    while (isHeard && !rest.empty()) {
        isHeard = send(channel, rest.substr(0, largestPart));
        rest.remove_prefix(std::min(rest.size(), largestPart));
    }
}

Fault refused(int error) { return {std::system_category().message(error)}; }

/// Everything but the channel and standard error, where a sanitizer would speak.
void closeAllBut(int channel) {
    ::close_range(0, STDERR_FILENO - 1, 0);
    if (channel > STDERR_FILENO + 1)
        ::close_range(STDERR_FILENO + 1, static_cast<unsigned>(channel) - 1, 0);
    ::close_range(static_cast<unsigned>(channel) + 1, UINT_MAX, 0);
}

/// The broker's life: it ends when the other side does, whatever signal a terminal sends to both.
[[noreturn]] void serveFiles(int channel,
                             const std::function<bool(const std::filesystem::path&)>& mayOpen) {
    std::signal(SIGINT, SIG_IGN);
    ::prctl(PR_SET_NAME, "tessary-files");
    closeAllBut(channel);
    enterSandbox({});
    for (;;) {
        const std::filesystem::path path{received(channel, PATH_MAX)};
        if (path.empty()) ::_exit(0);
        answer(channel, mayOpen(path) ? system::readFile(path) : refused(EPERM));
    }
}

}  // namespace

FileBroker::FileBroker(const std::function<bool(const std::filesystem::path&)>& mayOpen,
                       std::chrono::milliseconds patience)
    : patience_(patience) {
    std::array<int, 2> ends{-1, -1};
    if (::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends.data()) != 0)
        throw std::system_error{errno, std::system_category(), "cannot start the file broker"};
    channel_ = Descriptor{ends[0]};
    const Descriptor theirs{ends[1]};
    const pid_t process = ::fork();
    if (process < 0)
        throw std::system_error{errno, std::system_category(), "cannot start the file broker"};
    if (process == 0) serveFiles(theirs.number(), mayOpen);
}

system::FileContents FileBroker::read(const std::filesystem::path& path) {
    if (path.empty()) return refused(ENOENT);
    if (path.native().size() > PATH_MAX) return refused(ENAMETOOLONG);
    const std::lock_guard turn{turn_};
    auto contents = isGone_ ? std::nullopt : asked(path.native());
    isGone_ = !contents;
    return contents ? *std::move(contents) : Fault{"the file broker is gone"};
}

std::optional<system::FileContents> FileBroker::asked(const std::string& path) const {
    const int channel = channel_.number();
    const std::string head = send(channel, path) && hears() ? received(channel, PATH_MAX) : "";
    if (head.empty()) return std::nullopt;
    if (head.front() == refusalMark) return Fault{head.substr(1)};
    std::string bytes(std::stoul(head), '\0');
    for (std::size_t length = 0; length < bytes.size();) {
        const ssize_t count =
            hears() ? receive(channel, bytes.data() + length, bytes.size() - length) : 0;
        if (count <= 0) return std::nullopt;
        length += static_cast<std::size_t>(count);
    }
    return bytes;
}

bool FileBroker::hears() const {
    pollfd answer{channel_.number(), POLLIN, 0};
    const auto most = static_cast<int>(patience_.count());
    return system::uninterrupted([&] { return ::poll(&answer, 1, most); }) > 0;
}

}  // namespace tessary::sandbox
