#include "platform/sandbox/file_broker.h"

#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstring>
#include <optional>
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

/// A message of the channel: a path one way, a fault's reason or an open file the other.
struct Message {
    std::string text{};
    Descriptor file{};
};

/// The room of one descriptor beside a message.
union DescriptorRoom {
    cmsghdr alignment;
    std::array<char, CMSG_SPACE(sizeof(int))> bytes;
};

msghdr header(iovec& text, DescriptorRoom& room) {
    msghdr result{};
    result.msg_iov = &text;
    result.msg_iovlen = 1;
    result.msg_control = room.bytes.data();
    result.msg_controllen = room.bytes.size();
    return result;
}

bool send(int channel, std::string_view text, int file) {
    iovec part{const_cast<char*>(text.data()), text.size()};
    DescriptorRoom room{};
    msghdr message = header(part, room);
    if (file < 0) {
        message.msg_control = nullptr;
        message.msg_controllen = 0;
    } else {
        cmsghdr* beside = CMSG_FIRSTHDR(&message);
        beside->cmsg_level = SOL_SOCKET;
        beside->cmsg_type = SCM_RIGHTS;
        beside->cmsg_len = CMSG_LEN(sizeof file);
        std::memcpy(CMSG_DATA(beside), &file, sizeof file);
    }
    return system::uninterrupted([&] { return ::sendmsg(channel, &message, MSG_NOSIGNAL); }) >= 0;
}

/// Nothing when the other side is gone.
std::optional<Message> receive(int channel) {
    Message result{std::string(PATH_MAX, '\0'), Descriptor{}};
    iovec part{result.text.data(), result.text.size()};
    DescriptorRoom room{};
    msghdr message = header(part, room);
    const ssize_t length =
        system::uninterrupted([&] { return ::recvmsg(channel, &message, MSG_CMSG_CLOEXEC); });
    if (length <= 0) return std::nullopt;
    result.text.resize(static_cast<std::size_t>(length));
    if (const cmsghdr* beside = CMSG_FIRSTHDR(&message)) {
        int file = -1;
        std::memcpy(&file, CMSG_DATA(beside), sizeof file);
        result.file = Descriptor{file};
    }
    return result;
}

Fault refused(int error) { return {std::system_category().message(error)}; }

void answer(int channel, const foundation::Result<Descriptor>& opened) {
    if (opened)
        send(channel, "opened", opened->number());
    else
        send(channel, opened.fault().message(), -1);
}

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
    while (const auto asked = receive(channel)) {
        const std::filesystem::path path{asked->text};
        answer(channel, mayOpen(path) ? system::openFile(path)
                                      : foundation::Result<Descriptor>{refused(EPERM)});
    }
    ::_exit(0);
}

}  // namespace

FileBroker::FileBroker(const std::function<bool(const std::filesystem::path&)>& mayOpen) {
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
    const bool isAsked = send(channel_.number(), path.native(), -1);
    const auto answer = isAsked ? receive(channel_.number()) : std::nullopt;
    isGone_ = !answer;
    if (!answer) return Fault{"the file broker is gone"};
    if (answer->file.number() < 0) return Fault{answer->text};
    return system::readFile(answer->file);
}

}  // namespace tessary::sandbox
