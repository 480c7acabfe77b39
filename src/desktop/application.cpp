#include "desktop/application.h"

#include <cstdio>
#include <exception>
#include <gio/gio.h>
#include <glib-unix.h>
#include <memory>
#include <utility>

#include "desktop/client/feed.h"
#include "desktop/command.h"
#include "desktop/glib/connect.h"
#include "desktop/glib/handles.h"
#include "desktop/glib/note.h"
#include "desktop/live_desktop.h"
#include "desktop/places/state.h"
#include "desktop/windows/monitors.h"
#include "desktop/windows/widget_window.h"

namespace tessary::desktop {

using namespace glib;
using namespace places;
using namespace windows;
using foundation::Fault;
using foundation::Result;

namespace {

constexpr const char* applicationId = "com.tessary.desktop.Widgets";

/// What is supposed where no screen is at hand: nearly any has room for that.
const std::vector<Monitor> supposed{{.area = {1280, 720}}};

/// What a call ends with whose way has changed under it: a desktop has come or gone.
constexpr int tryAgain = 75;
constexpr int mostTries = 100;
constexpr gulong betweenTries = 100'000;  // microseconds

/// Whether a desktop has the session's name, which no other call ever has.
bool desktopRuns() {
    const Object<GDBusConnection> bus{g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr)};
    if (!bus) return false;
    GVariant* const answer = g_dbus_connection_call_sync(
        bus.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
        "NameHasOwner", g_variant_new("(s)", applicationId), G_VARIANT_TYPE("(b)"),
        G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr);
    gboolean has = FALSE;
    if (answer) g_variant_get(answer, "(b)", &has);
    if (answer) g_variant_unref(answer);
    return has;
}

Folders foldersOf(const Command& command) { return {command.container, command.info}; }

/// The instance that calls reach.
class Instance {
public:
    using Done = std::function<void(const Outcome&)>;

    explicit Instance(GApplication* application) : application_{application} {}

    /// Does it, perhaps only once the extension has told of its widgets.
    void carry(const Command& command, const Done& done) {
        if (!needsKinds(command) || (live_ && !live_->desktop().kinds().empty()))
            return done(carryOutSafely(command, live_ ? live_->desktop().kinds() : Kinds{}));
        g_application_hold(application_);
        const auto extension = std::make_shared<client::ExtensionProcess>(
            client::extensionCommand(options(live_ ? live_->folders() : foldersOf(command))),
            client::Patience{.tries = 1});
        extension->ask({.request = "list"}, [this, command, done, extension](const auto& reply) {
            done(reply.error ? Outcome{.status = 1, .complaint = *reply.error}
                             : carryOutSafely(command, reply.kinds));
            g_application_release(application_);
        });
    }

    void quit() {
        if (!std::exchange(live_, nullptr)) return;
        g_application_release(application_);
    }

private:
    Outcome carryOutSafely(const Command& command, const Kinds& kinds) try {
        auto result = carryOut(command, kinds);
        if (!result) return {.status = 1, .complaint = result.fault().message()};
        return *std::move(result);
    } catch (const std::exception& problem) {
        return {.status = 1, .complaint = problem.what()};
    }

    Result<Outcome> carryOut(const Command& command, const Kinds& kinds) {
        if (live_ && !command.container.empty() && live_->container() != command.container)
            return Fault{"the desktop that runs shows " +
                         live_->container().value_or("no container").native() + ", --quit ends it"};
        switch (command.action) {
            case Action::start: return start(command);
            case Action::gallery:
                return start(command).transform([this](const Outcome& outcome) {
                    live_->desktop().openGallery();
                    return outcome;
                });
            case Action::openEditor:
                return withWidget(command, kinds,
                                  [&] { live_->desktop().openEditor(command.number); });
            case Action::openLink: return openLink(command, kinds);
            case Action::reload: return tell([this] { live_->desktop().reload(); });
            case Action::quit: return tell([this] { quit(); });
            case Action::list:
            case Action::add:
            case Action::remove:
            case Action::edit: return change(command, kinds);
            case Action::help:
            case Action::version: break;  // answered by the caller itself
        }
        return Outcome{};
    }

    Result<Outcome> start(const Command& command) {
        if (live_) return howToBegin(command, widgets_);
        if (!openDisplay()) return Fault{"there is no display to show widgets on"};
        const FileLock whileReading;
        auto widgets = stateFile().andThen(loadWidgets);
        if (!widgets) return widgets.fault();
        const auto chosen = [this](const Command& byUser) {
            carry(byUser, [](const Outcome& outcome) {
                if (outcome.status != 0) note(outcome.complaint);
            });
        };
        live_ = std::make_unique<LiveDesktop>(foldersOf(command), chosen);
        g_application_hold(application_);
        return settled(*widgets).andThen([&]() -> Result<Outcome> {
            live_->desktop().show(widgets_);
            return howToBegin(command, widgets_);
        });
    }

    /// Where nothing is placed no widget says what it lacks.
    Outcome howToBegin(const Command& command, const std::vector<PlacedWidget>& placed) const {
        if (!placed.empty() || command.json) return {};
        if (live_ ? live_->hasFiles() : hasFiles(sourceOf(foldersOf(command)))) return {};
        return {.complaint = std::string{client::noneWatched} + " To begin, type " +
                             client::watchCommand + " in a terminal."};
    }

    /// Widgets that were added without a screen get their monitor.
    Result<void> settled(const std::vector<PlacedWidget>& widgets) {
        const auto first = monitors().front().name;
        widgets_ = widgets;
        for (auto& [number, kind, family, pin, place] : widgets_)
            if (!place.monitor) place.monitor = first;
        return widgets_ == widgets ? Result<void>{} : saved(widgets_);
    }

    template <class Do>
    Result<Outcome> tell(Do what) {
        if (!live_) return Fault{"no desktop runs"};
        what();
        return Outcome{};
    }

    template <class Do>
    Result<Outcome> withWidget(const Command& command, const Kinds& kinds, Do what) {
        if (!live_) return tell([] {});
        auto outcome = desktop::carryOut(command, widgets_, supposed, kinds);
        if (outcome.status == 0) what();
        return outcome;
    }

    Result<Outcome> openLink(const Command& command, const Kinds& kinds) {
        Result<void> opened;
        auto outcome =
            withWidget(command, kinds, [&] { opened = live_->desktop().openLink(command.number); });
        if (!opened) return opened.fault();
        return outcome;
    }

    /// Without a desktop only while none starts: that one has the name before it reads the file.
    Result<Outcome> change(const Command& command, const Kinds& kinds) {
        if (live_ || command.action == Action::list) return changeNow(command, kinds);
        const FileLock whileChanging;
        if (desktopRuns()) return Outcome{.status = tryAgain};
        return changeNow(command, kinds);
    }

    Result<Outcome> changeNow(const Command& command, const Kinds& kinds) {
        auto loaded = live_ ? Result{widgets_} : stateFile().andThen(loadWidgets);
        if (!loaded) return loaded.fault();
        auto& widgets = *loaded;
        const auto before = widgets;
        auto outcome = desktop::carryOut(command, widgets, live_ ? monitors() : supposed, kinds);
        if (command.action == Action::list)
            outcome.complaint = howToBegin(command, widgets).complaint;
        if (widgets == before) return outcome;
        return saved(widgets).andThen([&]() -> Result<Outcome> {
            if (live_) live_->desktop().show(widgets_ = widgets);
            const auto trouble = live_ ? live_->desktop().trouble() : "";
            if (command.action == Action::add && !trouble.empty())
                outcome.complaint = "the widget is added, but cannot be shown yet: " + trouble;
            return outcome;
        });
    }

    static Result<void> saved(const std::vector<PlacedWidget>& widgets) {
        const auto file = stateFile();
        return file ? saveWidgets(*file, widgets) : file.fault();
    }

    GApplication* application_;
    std::vector<PlacedWidget> widgets_{};  ///< while a desktop runs
    std::unique_ptr<LiveDesktop> live_{};
};

/// Tells the caller, and lets it go.
void answer(GApplicationCommandLine* line, const Outcome& outcome) {
    if (!outcome.output.empty())
        g_application_command_line_print(line, "%s", outcome.output.c_str());
    if (!outcome.complaint.empty())
        g_application_command_line_printerr(line, "%s", noteLine(outcome.complaint).c_str());
    g_application_command_line_set_exit_status(line, outcome.status);
}

void answerCall(Instance& instance, GApplicationCommandLine* line, int& ownStatus) {
    int count{};
    char** const words = g_application_command_line_get_arguments(line, &count);
    const char* folder = g_application_command_line_get_cwd(line);
    const auto call = parseCall({words + 1, words + count}, folder ? folder : "/");
    g_strfreev(words);
    const std::shared_ptr<GApplicationCommandLine> kept{
        static_cast<GApplicationCommandLine*>(g_object_ref(line)), g_object_unref};
    const auto done = [kept, &ownStatus](const Outcome& outcome) {
        answer(kept.get(), outcome);
        if (!g_application_command_line_get_is_remote(kept.get())) ownStatus = outcome.status;
    };
    if (!call) return done({2, "", call.fault().message()});
    instance.carry(*call, done);
}

/// Lets the signals that end a program end an instance, for as long as this is there.
class Endings {
public:
    explicit Endings(Instance& instance) {
        const auto end = [](gpointer self) -> gboolean {
            static_cast<Instance*>(self)->quit();
            return G_SOURCE_CONTINUE;
        };
        for (const int signal : {SIGINT, SIGTERM, SIGHUP})
            sources_.push_back(g_unix_signal_add(signal, end, &instance));
    }
    Endings(const Endings&) = delete;
    Endings& operator=(const Endings&) = delete;
    ~Endings() {
        for (const auto source : sources_) g_source_remove(source);
    }

private:
    std::vector<guint> sources_{};
};

/// A fault where the desktop that was to answer has gone before it did.
Result<int> runApplication(const std::vector<std::string>& words, int flags) {
    const Object<GApplication> application{g_application_new(
        applicationId, static_cast<GApplicationFlags>(G_APPLICATION_HANDLES_COMMAND_LINE | flags))};
    if (glib::Fault fault; !g_application_register(application.get(), nullptr, fault.out()))
        return Fault{fault.message()};
    const bool asksDesktop = g_application_get_is_remote(application.get());
    Instance instance{application.get()};
    int status{};  // of the call that started this, which the main loop forgets
    connect(application.get(), "command-line", [&](GApplicationCommandLine* line) {
        answerCall(instance, line, status);
        return g_application_command_line_get_exit_status(line);
    });
    const Endings endings{instance};
    std::vector<const char*> all{"tessary-widgets-desktop"};
    for (const auto& word : words) all.push_back(word.c_str());
    all.push_back(nullptr);
    const int told = g_application_run(application.get(), static_cast<int>(words.size()) + 1,
                                       const_cast<char**>(all.data()));
    if (asksDesktop && told != 0 && !desktopRuns()) return Fault{"the desktop has gone"};
    return told != 0 ? told : status;
}

/// Only a desktop takes the session's name: a call that had it for a moment would be taken for one.
/// What comes or goes meanwhile makes the call begin anew.
int callOrStart(const std::vector<std::string>& words, bool starts) {
    Result<int> status = tryAgain;
    for (int tries = 0; tries < mostTries; ++tries) {
        if (tries > 0) g_usleep(betweenTries);
        const int asCall = desktopRuns() ? G_APPLICATION_IS_LAUNCHER : G_APPLICATION_NON_UNIQUE;
        status = runApplication(words, starts ? 0 : asCall);
        if (status && *status != tryAgain) return *status;
    }
    note("the session's desktop cannot be reached" +
         (status ? "" : ": " + status.fault().message()));
    return 1;
}

}  // namespace

int run(const std::vector<std::string>& words) {
    // GLib's own would replace what the locale lacks.
    g_set_print_handler([](const char* text) { std::fputs(text, stdout); });
    g_set_printerr_handler([](const char* text) { std::fputs(text, stderr); });
    const Text folder{g_get_current_dir()};
    const auto call = parseCall(words, folder.get());
    if (!call) return note(call.fault().message()), 2;
    if (call->action == Action::help) return std::fputs(helpText().c_str(), stdout), 0;
    if (call->action == Action::version)
        return std::puts("tessary-widgets-desktop " TESSARY_VERSION), 0;
    return callOrStart(words, call->action == Action::start || call->action == Action::gallery);
}

}  // namespace tessary::desktop
