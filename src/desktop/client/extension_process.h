// The extension as a process of its own, which runs only while it is being asked.
//
//     ExtensionProcess extension{extensionCommand({"--container", folder})};
//     extension.ask({.request = "list"}, [](const Reply& reply) { ... });
//
// Everything happens in GLib's main loop. A process that ends early, does not answer or answers
// with anything but the reply that is due is started anew, and what it left unanswered is asked
// again: the first time at once, then after a pause that doubles. Every question is answered in the
// end, unless the extension is dropped before; where patience has an end, too, by an error.
//
// It is a stranger's process: what it writes is read up to limits, and what passes one is a failure
// like any other. Its standard error is passed on line by line (complaints.h).
#pragma once

#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "desktop/client/complaints.h"
#include "desktop/client/extension.h"
#include "desktop/glib/timer.h"

namespace tessary::client {

/// The words that start the extension with these options.
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

    void hurry() override;

    void moveTo(const std::optional<std::string>& timeZone) override;

    /// Has each failure told, and that it is over, from the main loop.
    void follow(std::function<void(const Trouble&)> told) { told_ = std::move(told); }

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
    void take(std::string_view line);
    void ended();
    void fail(const std::string& why);
    void tell();
    void pauseFor(std::chrono::milliseconds pause);
    void giveUp(const std::string& why);
    void awaitReply();

    std::vector<std::string> command_;
    Patience patience_;
    std::deque<Question> waiting_{};
    std::shared_ptr<Run> run_{};
    std::vector<std::weak_ptr<Run>> dropped_{};  ///< may not have ended yet
    std::shared_ptr<Allowance> complaints_{std::make_shared<Allowance>()};
    std::vector<protocol::Widget> kinds_{};  ///< as last listed
    glib::Timer idle_{}, reply_{}, pause_{}, telling_{};
    std::optional<std::string> timeZone_{};  ///< none: the process's own
    std::int64_t lastId_{};
    Trouble trouble_{};
    std::chrono::steady_clock::time_point failedAt_{};
    std::function<void(const Trouble&)> told_{};
};

}  // namespace tessary::client
