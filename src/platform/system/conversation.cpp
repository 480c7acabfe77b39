#include "platform/system/conversation.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstring>
#include <poll.h>
#include <unistd.h>
#include <utility>

namespace tessary::system {

namespace {

/// So many bytes of requests are taken in ahead of their answers.
constexpr std::size_t mostWaiting = std::size_t{4} << 20U;

class Conversation {
public:
    Conversation(const Ends& ends, const Answer& answer) : ends_(ends), answer_(answer) {}

    foundation::Result<void> hold() {
        while (state_) {
            if (unsent_.empty() && answerNext()) continue;
            if (unsent_.empty() && hasEnded_) break;
            waitAndMove();
        }
        return state_;
    }

private:
    /// False where no line waits.
    bool answerNext() {
        const std::optional<Line> line = lines_.next();
        if (!line) return false;
        std::string rest = answer_(*line, [this](std::string part) { say(std::move(part)); });
        if (!rest.empty()) say(std::move(rest) + '\n');
        return true;
    }

    void say(std::string text) {
        while (state_ && !unsent_.empty()) waitAndMove();
        text_ = std::move(text);
        unsent_ = text_;
    }

    void waitAndMove() {
        const bool isReading = !hasEnded_ && lines_.waiting() < mostWaiting;
        // Without an event to wait for, the output still tells that nobody is there any more.
        std::array<pollfd, 2> ready{
            {{ends_.output, static_cast<short>(unsent_.empty() ? 0 : POLLOUT), 0},
             {isReading ? ends_.input : -1, POLLIN, 0}}};
        if (::poll(ready.data(), ready.size(), -1) < 0) {
            if (errno != EINTR) fail("cannot wait for input");
            return;
        }
        if ((ready[0].revents & (POLLERR | POLLNVAL)) != 0) return send();
        if ((ready[0].revents & POLLOUT) != 0) send();
        if (ready[1].revents != 0) receive();
    }

    void receive() {
        std::array<char, 65536> bytes;
        const auto most = std::min(bytes.size(), mostWaiting - lines_.waiting());
        const ssize_t count = ::read(ends_.input, bytes.data(), most);
        if (count < 0 && errno == EINTR) return;
        if (count < 0) return fail("cannot read standard input");
        if (count > 0) return lines_.feed({bytes.data(), static_cast<std::size_t>(count)});
        lines_.end();
        hasEnded_ = true;
    }

    /// A pipe that is ready takes this much without making the writer wait. Nothing to send finds
    /// out why the output is no longer there.
    void send() {
        const auto part = std::min<std::size_t>(unsent_.size(), PIPE_BUF);
        const ssize_t count = ::write(ends_.output, unsent_.data(), part);
        if (count < 0 && errno == EINTR) return;
        if (count < 0) return fail("cannot write standard output");
        if (part == 0) {
            errno = EPIPE;
            return fail("cannot write standard output");
        }
        unsent_.remove_prefix(static_cast<std::size_t>(count));
        if (unsent_.empty()) std::string{}.swap(text_);  // an assignment would keep the room
    }

    void fail(const std::string& what) {
        state_ = foundation::Fault{what + ": " + std::strerror(errno)};
    }

    Ends ends_;
    const Answer& answer_;
    LineCutter lines_{};
    std::string text_{};
    std::string_view unsent_{};  ///< of `text_`
    bool hasEnded_{};
    foundation::Result<void> state_{};
};

}  // namespace

void LineCutter::feed(std::string_view bytes) {
    while (!bytes.empty()) {
        const std::size_t end = std::min(bytes.find('\n'), bytes.size());
        if (open_.text.size() + end > longestLine) open_ = {{}, true};
        if (!open_.isTooLong) open_.text += bytes.substr(0, end);
        if (end < bytes.size()) finish();
        bytes.remove_prefix(std::min(end + 1, bytes.size()));
    }
}

void LineCutter::end() {
    if (open_ != Line{}) finish();
}

std::size_t LineCutter::room(const Line& line) {
    return std::max(line.text.size() + 1, sizeof(Line));
}

void LineCutter::finish() {
    waiting_ += room(open_);
    lines_.push_back(std::exchange(open_, {}));
}

std::optional<Line> LineCutter::next() {
    if (lines_.empty()) return std::nullopt;
    Line line = std::move(lines_.front());
    lines_.pop_front();
    waiting_ -= room(line);
    return line;
}

foundation::Result<void> hold(const Ends& ends, const Answer& answer) {
    return Conversation{ends, answer}.hold();
}

}  // namespace tessary::system
