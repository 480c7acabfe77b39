// The extension as a process of its own, which runs only while it is being asked.
//
//     ExtensionProcess extension{extensionCommand({"--container", folder})};
//     extension.ask({.request = "list"}, [](const Reply& reply) { ... });
//
// Everything happens in GLib's main loop. A process that ends early, does not answer or answers
// with anything but the reply that is due is started anew, and what it left unanswered is asked
// again: the first time at once, then after a pause that doubles. Every question is answered in the
// end, unless the extension is dropped before; where patience has an end, too, by an error.
#pragma once

#include <chrono>
#include <cstdint>
#include <deque>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "desktop/client/extension.h"
#include "desktop/glib/timer.h"

namespace tessary::client {

/// The words that start the extension with these options: the program beside this one, else the one
/// of that name on the PATH.
std::vector<std::string> extensionCommand(const std::vector<std::string>& options);

struct Patience {
    std::chrono::milliseconds idle{5'000};    ///< how long a process without a question lives on
    std::chrono::milliseconds reply{10'000};  ///< how long one may think about an answer
    std::chrono::milliseconds firstPause{1'000};
    std::chrono::milliseconds longestPause{300'000};
    int tries{std::numeric_limits<int>::max()};  ///< then errors answer what is asked
};

/// How long to wait before asking again after so many failures, 1 or more, without a good reply.
std::chrono::milliseconds pauseAfter(int failures, const Patience& patience);

class ExtensionProcess final : public Extension {
public:
    explicit ExtensionProcess(std::vector<std::string> command, Patience patience = {});
    ExtensionProcess(const ExtensionProcess&) = delete;
    ExtensionProcess& operator=(const ExtensionProcess&) = delete;
    ~ExtensionProcess() override;

    void ask(const Request& request, Answer answer) override;

    /// Starts a process if none runs.
    void prepare() override;

    void moveTo(const std::optional<std::string>& timeZone) override;

    /// Whether a process runs.
    bool running() const { return run_ != nullptr; }

private:
    struct Run;
    struct Question {
        Request request{};
        Answer answer{};
    };

    void start();
    void end();
    void take(const char* line, std::size_t size);
    void ended();
    void fail(const std::string& why);
    void giveUp(const std::string& why);
    void awaitReply();

    std::vector<std::string> command_;
    Patience patience_;
    std::deque<Question> waiting_{};
    std::shared_ptr<Run> run_{};
    std::vector<std::weak_ptr<Run>> dropped_{};  ///< may not have ended yet
    glib::Timer idle_{}, reply_{}, pause_{};
    std::optional<std::string> timeZone_{};  ///< none: the process's own
    std::int64_t lastId_{};
    int failures_{};  ///< since the last good reply
};

}  // namespace tessary::client
