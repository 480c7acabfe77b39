// A program run to its end: without a shell, a terminal or an input, and never for ever.
//
//     const auto ended = runChild({.words = {"aws", "--version"}, .with = {"AWS_PAGER="}});
//     ended->status                       // 0
//     ended->output                       // "aws-cli/2.9.19 ...\n"
//     runChild({.words = {"no-such-program"}}).fault().kind    // ChildFault::Kind::notFound
#pragma once

#include <chrono>
#include <cstddef>
#include <string>
#include <vector>

#include "platform/foundation/result.h"

namespace tessary::system {

/// What is run, and how much of it is borne.
struct Errand {
    std::vector<std::string> words{};  ///< the program, looked for as PATH says, and its arguments
    std::vector<std::string> with{};   ///< variables that it gets: "AWS_PAGER="
    std::vector<std::string> without{};  ///< and those that are kept from it: "WATCHDOG_*"
    std::size_t mostOutput{std::size_t{64} << 10U};  ///< bytes; more is a fault
    std::size_t mostErrors{std::size_t{64} << 10U};  ///< bytes; what is beyond is dropped
    std::chrono::milliseconds time{std::chrono::seconds{30}};
    int stop{-1};  ///< a descriptor that calls it off once it can be read; negative: none
};

/// How it ended, and what it said.
struct Ended {
    int status{};
    int signal{};  ///< that ended it; 0 where it ended by itself
    std::string output{};
    std::string errors{};
};

struct ChildFault {
    enum class Kind { notFound, notStarted, timedOut, tooMuchOutput, stopped };
    Kind kind{};
    std::string words{};  ///< "aws did not end within 30 s"

    const std::string& message() const { return words; }
};

/// Starts the program in a session of its own and waits for it. One that takes too long, says too
/// much or is called off is killed with all of its group. What the program has left running is
/// neither waited for nor killed, though it may hold the pipes. A process that ignores SIGCHLD is
/// told of no end, which is a fault.
foundation::Result<Ended, ChildFault> runChild(const Errand& errand);

/// Starts a program that a person works with, as a browser: with this one's streams and in its
/// session, waited for as long as it runs. An errand's limits do not count.
foundation::Result<Ended, ChildFault> runAttached(const Errand& errand);

}  // namespace tessary::system
