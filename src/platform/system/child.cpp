#include "platform/system/child.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <fnmatch.h>
#include <optional>
#include <poll.h>
#include <spawn.h>
#include <string_view>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <utility>

#include "platform/foundation/numbers.h"
#include "platform/system/files.h"

namespace tessary::system {

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

ChildFault notStarted(const Errand& errand, int error) {
    const auto kind = error == ENOENT ? ChildFault::Kind::notFound : ChildFault::Kind::notStarted;
    const std::string program = errand.words.empty() ? "a program" : errand.words.front();
    return {kind, "cannot start " + program + ": " + std::system_category().message(error)};
}

ChildFault timedOut(const Errand& errand) {
    const auto seconds = std::chrono::duration<double>(errand.time).count();
    return {ChildFault::Kind::timedOut,
            errand.words.front() + " did not end within " + foundation::digits(seconds) + " s"};
}

ChildFault stopped(const Errand& errand) {
    return {ChildFault::Kind::stopped, errand.words.front() + " was called off"};
}

ChildFault tooMuchOutput(const Errand& errand) {
    return {ChildFault::Kind::tooMuchOutput, errand.words.front() + " printed more than " +
                                                 std::to_string(errand.mostOutput) + " bytes"};
}

/// This process's variables without those that are kept back, and those that are added.
std::vector<std::string> environmentOf(const Errand& errand) {
    std::vector<std::string> variables = errand.with;
    for (char** at = environ; at != nullptr && *at != nullptr; ++at) {
        const std::string variable = *at;
        const std::string name = variable.substr(0, variable.find('='));
        const auto hides = [&](const std::string& pattern) {
            return ::fnmatch(pattern.c_str(), name.c_str(), 0) == 0;
        };
        const auto replaces = [&](const std::string& given) {
            return given.starts_with(name + '=');
        };
        if (!std::ranges::any_of(errand.without, hides) &&
            !std::ranges::any_of(errand.with, replaces))
            variables.push_back(variable);
    }
    return variables;
}

/// As the system takes them; they last as long as the texts.
std::vector<char*> pointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers(texts.size() + 1, nullptr);
    std::ranges::transform(texts, pointers.begin(), [](std::string& text) { return text.data(); });
    return pointers;
}

/// What one of the child's streams has said.
struct Intake {
    Descriptor ours{};  ///< closed once nothing can come any more
    Descriptor theirs{};
    std::size_t most{};
    std::string text{};
    bool isOver{};  ///< more came than is kept

    /// Whether the system had a pipe to give.
    bool open() {
        std::array<int, 2> ends{-1, -1};
        if (::pipe2(ends.data(), O_CLOEXEC) != 0) return false;
        ours = Descriptor{ends[0]};
        theirs = Descriptor{ends[1]};
        return ::fcntl(ours.number(), F_SETFL, O_NONBLOCK) == 0;
    }
    /// What lies in the pipe, which holds no more than this reads at once.
    void take() {
        if (ours.number() < 0) return;
        std::array<char, std::size_t{64} << 10U> room;
        const auto count =
            uninterrupted([&] { return ::read(ours.number(), room.data(), room.size()); });
        if (count == 0) ours.close();
        if (count <= 0) return;
        const auto fitting = std::min(static_cast<std::size_t>(count), most - text.size());
        text.append(room.data(), fitting);
        isOver = isOver || std::cmp_less(fitting, count);
    }
};

/// How a child is started: with no more than three streams, and signals as they were before anybody
/// changed them.
class Start {
public:
    Start() {
        ::posix_spawn_file_actions_init(&actions_);
        sigset_t signals;
        ::posix_spawnattr_init(&attributes_);
        ::sigemptyset(&signals);
        ::posix_spawnattr_setsigmask(&attributes_, &signals);
        ::sigfillset(&signals);
        ::posix_spawnattr_setsigdefault(&attributes_, &signals);
    }
    /// In a session of its own, without an input.
    Start(const Intake& output, const Intake& errors) : Start() {
        ::posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        ::posix_spawn_file_actions_adddup2(&actions_, output.theirs.number(), STDOUT_FILENO);
        ::posix_spawn_file_actions_adddup2(&actions_, errors.theirs.number(), STDERR_FILENO);
        flags_ |= POSIX_SPAWN_SETSID;
    }
    Start(const Start&) = delete;
    Start& operator=(const Start&) = delete;
    ~Start() {
        ::posix_spawn_file_actions_destroy(&actions_);
        ::posix_spawnattr_destroy(&attributes_);
    }

    /// 0, or why not.
    int operator()(pid_t& process, const Errand& errand) {
        ::posix_spawn_file_actions_addclosefrom_np(&actions_, STDERR_FILENO + 1);
        ::posix_spawnattr_setflags(&attributes_, static_cast<short>(flags_));
        auto words = errand.words;
        auto variables = environmentOf(errand);
        return ::posix_spawnp(&process, words.front().c_str(), &actions_, &attributes_,
                              pointersTo(words).data(), pointersTo(variables).data());
    }

private:
    posix_spawn_file_actions_t actions_{};
    posix_spawnattr_t attributes_{};
    int flags_{POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF};
};

/// A process that was started, and that is not left behind.
class Child {
public:
    /// By its number: the C library's own call has no name in C++ before 2.37.
    explicit Child(pid_t process)
        : process_(process), sign_(static_cast<int>(::syscall(SYS_pidfd_open, process, 0))) {}
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;
    ~Child() {
        if (process_ > 0) kill();
    }

    /// Becomes readable when it ends; negative where the system has none to give.
    int sign() const { return sign_.number(); }

    /// How it has ended, as waitpid says; none where this process wants no word of its children.
    std::optional<int> collect() {
        int how = 0;
        const auto told = uninterrupted([&] { return ::waitpid(process_, &how, 0); });
        process_ = 0;
        return told < 0 ? std::nullopt : std::optional{how};
    }

private:
    /// All of its group. Who cannot be killed now (another user's by now, or held by a disk) is
    /// waited for elsewhere.
    void kill() {
        ::kill(-process_, SIGKILL);
        pollfd gone{sign(), POLLIN, 0};
        const milliseconds patience{std::chrono::seconds{1}};
        const bool isGone =
            uninterrupted([&] { return ::poll(&gone, 1, static_cast<int>(patience.count())); }) > 0;
        if (isGone)
            collect();
        else
            std::thread{[process = process_] { ::waitpid(process, nullptr, 0); }}.detach();
    }

    pid_t process_;
    Descriptor sign_;
};

/// Waits until something has come in, or the child has ended: whether that is so. A fault when the
/// time is over, or nobody wants it any more.
foundation::Result<bool, ChildFault> waited(const Child& child, const Intake& output,
                                            const Intake& errors, const Errand& errand,
                                            steady_clock::time_point end) {
    std::array<pollfd, 4> signs{{{child.sign(), POLLIN, 0},
                                 {output.ours.number(), POLLIN, 0},
                                 {errors.ours.number(), POLLIN, 0},
                                 {errand.stop, POLLIN, 0}}};
    const auto left = std::chrono::ceil<milliseconds>(end - steady_clock::now());
    if (left <= milliseconds{0}) return timedOut(errand);
    ::poll(signs.data(), signs.size(), static_cast<int>(left.count()));
    if ((signs[3].revents & POLLIN) != 0) return stopped(errand);
    return (signs[0].revents & POLLIN) != 0;
}

bool isRunnable(const Errand& errand) {
    const auto holdsEnd = [](const std::string& text) { return text.find('\0') != text.npos; };
    return !errand.words.empty() && !std::ranges::any_of(errand.words, holdsEnd);
}

foundation::Result<Ended, ChildFault> endOf(Child& child, const Errand& errand) {
    const auto how = child.collect();
    if (!how) return notStarted(errand, errno);
    return Ended{.status = WIFEXITED(*how) ? WEXITSTATUS(*how) : 0,
                 .signal = WIFSIGNALED(*how) ? WTERMSIG(*how) : 0};
}

}  // namespace

foundation::Result<Ended, ChildFault> runChild(const Errand& errand) {
    const auto end = steady_clock::now() + errand.time;
    if (!isRunnable(errand)) return notStarted(errand, EINVAL);
    Intake output{.most = errand.mostOutput};
    Intake errors{.most = errand.mostErrors};
    if (!output.open() || !errors.open()) return notStarted(errand, errno);
    pid_t process = 0;
    if (const int error = Start{output, errors}(process, errand)) return notStarted(errand, error);
    Child child{process};
    output.theirs.close();
    errors.theirs.close();
    if (child.sign() < 0) return notStarted(errand, errno);

    for (bool hasEnded = false; !hasEnded;) {
        const auto seen = waited(child, output, errors, errand, end);
        if (!seen) return seen.fault();
        hasEnded = *seen;
        output.take();  // what it wrote before it ended lies in the pipe by now
        errors.take();
        if (output.isOver) return tooMuchOutput(errand);
    }
    auto ended = endOf(child, errand);
    if (!ended) return ended;
    ended->output = std::move(output.text);
    ended->errors = std::move(errors.text);
    return ended;
}

foundation::Result<Ended, ChildFault> runAttached(const Errand& errand) {
    if (!isRunnable(errand)) return notStarted(errand, EINVAL);
    pid_t process = 0;
    if (const int error = Start{}(process, errand)) return notStarted(errand, error);
    Child child{process};
    return endOf(child, errand);
}

}  // namespace tessary::system
