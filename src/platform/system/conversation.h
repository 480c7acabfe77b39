// A conversation in lines over two descriptors: what comes in on one is answered on the other.
//
//     hold({STDIN_FILENO, STDOUT_FILENO},
//          [](const Line& line, const Send&) { return answerTo(line); });
#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "platform/foundation/result.h"

namespace tessary::system {

/// A line without its newline; or one that was longer than `longestLine`, of which nothing is kept.
struct Line {
    std::string text{};
    bool isTooLong{};
    bool operator==(const Line&) const = default;
};

/// Bytes. A request takes about two hundred.
inline constexpr std::size_t longestLine = std::size_t{1} << 20U;

/// Cuts bytes into lines as they come. A line that is too long costs no memory.
class LineCutter {
public:
    void feed(std::string_view bytes);
    /// What stands behind the last newline is a line, too, unless it is nothing.
    void end();

    /// The next whole line; none when more bytes are needed.
    std::optional<Line> next();
    /// Bytes that wait, in whole lines and behind them; a line counts as no less than it takes.
    std::size_t waiting() const { return waiting_ + open_.text.size(); }

private:
    static std::size_t room(const Line& line);
    void finish();

    std::deque<Line> lines_{};
    Line open_{};
    std::size_t waiting_{};
};

struct Ends {
    int input{};
    int output{};
};

/// Sends the beginning of an answer, or what follows what was sent before; returns when the other
/// side has taken that.
using Send = std::function<void(std::string)>;
/// Returns the answer to a line, or what is left of one that is too long to be held as a whole.
using Answer = std::function<std::string(const Line&, const Send&)>;

/// Answers every line with one line, in order, until the input ends; an empty answer is not sent.
/// Goes on reading while the other side does not take its answers, so that it may send many
/// requests (4 MiB) before it reads the first reply. Fails where the input cannot be read, or
/// nobody takes the output any more.
foundation::Result<void> hold(const Ends& ends, const Answer& answer);

}  // namespace tessary::system
