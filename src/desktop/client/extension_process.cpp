#include "desktop/client/extension_process.h"

#include <algorithm>
#include <malloc.h>
#include <utility>

#include "desktop/client/line_reader.h"
#include "desktop/client/program.h"
#include "desktop/glib/connect.h"
#include "desktop/glib/handles.h"
#include "desktop/glib/note.h"
#include "platform/foundation/json_writing.h"

namespace tessary::client {

using namespace glib;

namespace {

/// How long a process may take to end once its input has ended.
constexpr unsigned farewellSeconds = 2;

constexpr gsize readAtOnce = 32'768;
constexpr std::size_t longLine = 1'048'576;  // whose memory is given back at once

/// What is done once that time is over: the process ends by force, and nobody reads on what a
/// child of it may still write.
struct Farewell {
    Object<GSubprocess> process{};
    Object<GCancellable> reading{};

    static gboolean come(gpointer data) {
        const auto& [process, reading] = *static_cast<Farewell*>(data);
        g_subprocess_force_exit(process.get());
        g_cancellable_cancel(reading.get());
        return G_SOURCE_REMOVE;
    }
    static void free(gpointer data) { delete static_cast<Farewell*>(data); }
};

template <class Type>
Object<Type> another(const Object<Type>& held) {
    return Object<Type>{static_cast<Type*>(g_object_ref(held.get()))};
}

Object<GSubprocess> spawn(const std::vector<std::string>& command, Fault& fault) {
    std::vector<const char*> words;
    words.reserve(command.size() + 1);
    for (const auto& word : command) words.push_back(word.c_str());
    words.push_back(nullptr);
    constexpr auto pipes = G_SUBPROCESS_FLAGS_STDIN_PIPE | G_SUBPROCESS_FLAGS_STDOUT_PIPE |
                           G_SUBPROCESS_FLAGS_STDERR_PIPE;
    return Object<GSubprocess>{
        g_subprocess_newv(words.data(), static_cast<GSubprocessFlags>(pipes), fault.out())};
}

std::string lineOf(const Request& request) { return foundation::toJSON(request) + "\n"; }

}  // namespace

/// One process. Its reads and writes hold on to it, so it may outlive its owner's interest in it.
struct ExtensionProcess::Run : std::enable_shared_from_this<Run> {
    Run(ExtensionProcess* theOwner, Object<GSubprocess> started)
        : owner{theOwner}, process{std::move(started)}, complaints{theOwner->complaints_} {}

    void write(const std::string& text) {
        outgoing += text;
        if (writing.empty()) writeOn();
    }
    void writeOn() {
        writing = std::exchange(outgoing, {});
        if (writing.empty()) return;
        const auto [call, data] =
            once([run = shared_from_this()](GObject* to, GAsyncResult* result) {
                const bool wrote =
                    g_output_stream_write_all_finish(G_OUTPUT_STREAM(to), result, nullptr, nullptr);
                run->writing.clear();
                if (wrote && run->owner)
                    run->writeOn();  // where it failed, the reader will learn it
            });
        g_output_stream_write_all_async(g_subprocess_get_stdin_pipe(process.get()), writing.data(),
                                        writing.size(), G_PRIORITY_DEFAULT, nullptr, call, data);
    }

    void read() {
        read(g_subprocess_get_stdout_pipe(process.get()), &Run::takeOutput);
        read(g_subprocess_get_stderr_pipe(process.get()), &Run::takeComplaints);
    }
    /// To its end, which is no bytes. In pieces, as a line may be without end.
    void read(GInputStream* from, void (Run::*take)(std::string_view)) {
        const auto [call, data] =
            once([run = shared_from_this(), take](GObject* source, GAsyncResult* result) {
                auto* const stream = G_INPUT_STREAM(source);
                GBytes* const piece = g_input_stream_read_bytes_finish(stream, result, nullptr);
                gsize size{};
                const void* const bytes = piece ? g_bytes_get_data(piece, &size) : nullptr;
                (run.get()->*take)({static_cast<const char*>(bytes), size});
                g_bytes_unref(piece);
                if (size > 0) run->read(stream, take);
            });
        g_input_stream_read_bytes_async(from, readAtOnce, G_PRIORITY_DEFAULT, reading.get(), call,
                                        data);
    }
    void takeOutput(std::string_view bytes) {
        const auto take = [this](std::string_view line) {
            if (owner) owner->take(line);
        };
        if (!owner) return;
        if (bytes.empty()) return owner->ended();
        if (!lines.feed(bytes, take)) giveUp("answers with a line without end");
    }
    void takeComplaints(std::string_view bytes) {
        if (bytes.empty()) return complaints.end();
        if (!complaints.take(bytes)) giveUp("complains without end");
    }
    /// A child of the process may go on writing: nobody listens any more.
    void giveUp(const char* why) const {
        if (owner) owner->fail(why);
        g_cancellable_cancel(reading.get());
    }

    /// Null once it has lost interest; what the process still writes is then read to its end, as it
    /// would complain about a reader that is gone.
    ExtensionProcess* owner;
    Object<GSubprocess> process;
    Object<GCancellable> reading{g_cancellable_new()};
    LineReader lines{protocol::replyLimits.bytes};
    Complaints complaints;
    std::string writing{}, outgoing{};
};

std::vector<std::string> extensionCommand(const std::vector<std::string>& options) {
    std::vector<std::string> command{programOfOurs("tessary-widgets"), "serve"};
    command.insert(command.end(), options.begin(), options.end());
    return command;
}

std::chrono::milliseconds pauseAfter(int failures, const Patience& patience) {
    if (failures < 2) return {};
    const int doublings = std::min(failures - 2, 20);
    return std::min(patience.firstPause * (1 << doublings), patience.longestPause);
}

ExtensionProcess::ExtensionProcess(std::vector<std::string> command, Patience patience)
    : command_{std::move(command)}, patience_{patience} {}

ExtensionProcess::~ExtensionProcess() {
    // There may be no loop any more that reads them to their ends; and they keep nothing.
    if (run_) dropped_.push_back(run_);
    for (const auto& dropped : dropped_)
        if (const auto run = dropped.lock()) g_subprocess_force_exit(run->process.get());
    end();
}

void ExtensionProcess::ask(const Request& request, Answer answer) {
    waiting_.push_back({request, std::move(answer)});
    waiting_.back().request.id = ++lastId_;
    waiting_.back().request.timeZone = timeZone_;
    if (pause_.running()) return;
    if (!run_) return start();
    idle_.cancel();
    run_->write(lineOf(waiting_.back().request));
    if (waiting_.size() == 1) awaitReply();
}

void ExtensionProcess::prepare() {
    if (pause_.running()) return;
    if (!run_) return start();
    if (waiting_.empty()) awaitReply();  // for the idle time anew
}

/// However often it is called, the first pause lies between two failures from the second on.
void ExtensionProcess::hurry() {
    if (!pause_.running() || trouble_.failures < 2 || trouble_.failures >= patience_.tries) return;
    const auto passed = std::chrono::duration_cast<std::chrono::milliseconds>(
        std::chrono::steady_clock::now() - failedAt_);
    pauseFor(std::max({}, patience_.firstPause - passed));
}

void ExtensionProcess::moveTo(const std::optional<std::string>& timeZone) {
    timeZone_ = timeZone;
    if (timeZone_ || !run_) return;
    end();
    if (!waiting_.empty()) start();
}

void ExtensionProcess::start() {
    Fault fault;
    auto process = spawn(command_, fault);
    if (!process) return fail("cannot be started: " + fault.message());
    run_ = std::make_shared<Run>(this, std::move(process));
    for (const auto& question : waiting_) run_->write(lineOf(question.request));
    awaitReply();
    run_->read();
}

/// Ends the process by ending its input, and by force if that does not do.
void ExtensionProcess::end() {
    idle_.cancel();
    reply_.cancel();
    const auto run = std::exchange(run_, nullptr);
    if (!run) return;
    run->owner = nullptr;
    std::erase_if(dropped_, [](const auto& dropped) { return dropped.expired(); });
    dropped_.push_back(run);
    g_output_stream_close(g_subprocess_get_stdin_pipe(run->process.get()), nullptr, nullptr);
    g_timeout_add_seconds_full(G_PRIORITY_DEFAULT, farewellSeconds, &Farewell::come,
                               new Farewell{another(run->process), another(run->reading)},
                               &Farewell::free);
}

void ExtensionProcess::take(std::string_view line) {
    if (waiting_.empty()) return fail("answered a question that was not asked");
    const auto reply = decodeReply(line, waiting_.front().request, kinds_);
    if (line.size() > longLine) malloc_trim(0);
    if (!reply) return fail("answered with something that is no reply: " + reply.fault().message());
    if (waiting_.front().request.id != protocol::Identifier{reply->id})
        return fail("answered a question that was not asked");
    if (std::exchange(trouble_, {}).failures > 0) tell();
    if (!reply->kinds.empty()) kinds_ = reply->kinds;
    const auto answer = std::move(waiting_.front().answer);
    waiting_.pop_front();
    awaitReply();
    answer(*reply);
}

void ExtensionProcess::ended() {
    if (!waiting_.empty()) return fail("ended without an answer");
    end();
}

void ExtensionProcess::fail(const std::string& why) {
    if (run_) g_subprocess_force_exit(run_->process.get());
    end();
    trouble_ = {trouble_.failures + 1, "the extension " + why};
    failedAt_ = std::chrono::steady_clock::now();
    tell();
    if (trouble_.failures >= patience_.tries) return giveUp(trouble_.why);
    const auto pause = pauseAfter(trouble_.failures, patience_);
    note(trouble_.why + "; asking it again in " + std::to_string(pause.count() / 1000) + " s");
    pauseFor(pause);
}

void ExtensionProcess::pauseFor(std::chrono::milliseconds pause) {
    pause_.start(pause, [this] {
        if (!waiting_.empty()) start();
    });
}

/// A moment later, as this may be within the call that asks.
void ExtensionProcess::tell() {
    telling_.start({}, [this] {
        if (told_) told_(trouble_);
    });
}

/// A moment later, as this may be within the call that asks, and an answer may drop the extension.
void ExtensionProcess::giveUp(const std::string& why) {
    pause_.start({}, [this, why] {
        for (const auto& question : std::exchange(waiting_, {})) question.answer({.error = why});
    });
}

void ExtensionProcess::awaitReply() {
    reply_.cancel();
    idle_.cancel();
    if (waiting_.empty())
        idle_.start(patience_.idle, [this] { end(); });
    else
        reply_.start(patience_.reply, [this] { fail("does not answer"); });
}

}  // namespace tessary::client
