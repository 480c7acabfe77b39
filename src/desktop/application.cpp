#include "desktop/application.h"

#include <cstdio>
#include <exception>
#include <gio/gio.h>
#include <glib-unix.h>
#include <memory>
#include <utility>

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

namespace {

constexpr const char* applicationId = "com.tessary.desktop.Widgets";

/// What is supposed where no screen is at hand: nearly any has room for that.
const std::vector<Monitor> supposed{{.area = {1280, 720}}};

std::string defaultContainer() {
    return Text{
        g_build_filename(g_get_user_data_dir(), "group-containers", TESSARY_APP_GROUP, nullptr)}
        .get();
}

/// The instance that calls reach.
class Instance {
public:
    explicit Instance(GApplication* application) : application_{application} {}

    Outcome carry(const Command& command) try {
        if (live_ && !command.container.empty() && command.container != live_->folders().container)
            return {.status = 1,
                    .complaint = "the desktop that runs shows " + live_->folders().container +
                                 ", --quit ends it"};
        switch (command.action) {
            case Action::start: return start(command);
            case Action::gallery: return openGallery(command);
            case Action::openEditor:
                return withWidget(command, [&] { live_->desktop().openEditor(command.number); });
            case Action::openLink:
                return withWidget(command, [&] { live_->desktop().openLink(command.number); });
            case Action::reload: return tell([this] { live_->desktop().reload(); });
            case Action::quit: return tell([this] { quit(); });
            case Action::list:
            case Action::add:
            case Action::remove:
            case Action::edit: return change(command);
            case Action::help:
            case Action::version: break;  // answered by the caller itself
        }
        return {};
    } catch (const std::exception& problem) {
        return {.status = 1, .complaint = problem.what()};
    }

    void quit() {
        if (!std::exchange(live_, nullptr)) return;
        g_application_release(application_);
    }

private:
    Outcome start(const Command& command) {
        if (live_) return {};
        if (!openDisplay())
            return {.status = 1, .complaint = "there is no display to show widgets on"};
        const auto widgets = loadWidgets(stateFile());
        auto container = command.container.empty() ? defaultContainer() : command.container;
        const auto chosen = [this](const Command& byUser) {
            const auto outcome = carry(byUser);
            if (outcome.status != 0) note(outcome.complaint);
        };
        live_ = std::make_unique<LiveDesktop>(Folders{std::move(container), command.info}, chosen);
        g_application_hold(application_);
        widgets_ = widgets;
        settle();
        live_->desktop().show(widgets_);
        return {};
    }

    /// Widgets that were added without a screen get their monitor.
    void settle() {
        const auto first = monitors().front().name;
        const auto before = widgets_;
        for (auto& [number, kind, family, pin, place] : widgets_)
            if (!place.monitor) place.monitor = first;
        if (widgets_ != before) saveWidgets(stateFile(), widgets_);
    }

    template <class Do>
    Outcome tell(Do what) {
        if (!live_) return {.status = 1, .complaint = "no desktop runs"};
        what();
        return {};
    }

    Outcome openGallery(const Command& command) {
        auto outcome = start(command);
        if (live_) live_->desktop().openGallery();
        return outcome;
    }

    template <class Do>
    Outcome withWidget(const Command& command, Do what) {
        if (!live_) return tell([] {});
        auto outcome = carryOut(command, widgets_, supposed);
        if (outcome.status == 0) what();
        return outcome;
    }

    Outcome change(const Command& command) {
        auto widgets = live_ ? widgets_ : loadWidgets(stateFile());
        const auto before = widgets;
        auto outcome = carryOut(command, widgets, live_ ? monitors() : supposed);
        if (widgets == before) return outcome;
        saveWidgets(stateFile(), widgets);
        if (live_) live_->desktop().show(widgets_ = widgets);
        return outcome;
    }

    GApplication* application_;
    std::vector<PlacedWidget> widgets_{};  ///< while a desktop runs
    std::unique_ptr<LiveDesktop> live_{};
};

int answerCall(Instance& instance, GApplicationCommandLine* line) {
    int count{};
    char** const words = g_application_command_line_get_arguments(line, &count);
    const char* folder = g_application_command_line_get_cwd(line);
    const auto call = parseCall({words + 1, words + count}, folder ? folder : "/");
    g_strfreev(words);
    const auto outcome = call ? instance.carry(*call) : Outcome{2, "", call.fault().message()};
    if (!outcome.output.empty())
        g_application_command_line_print(line, "%s", outcome.output.c_str());
    if (!outcome.complaint.empty())
        g_application_command_line_printerr(line, "tessary-widgets-desktop: %s\n",
                                            outcome.complaint.c_str());
    return outcome.status;
}

int runApplication(const std::vector<std::string>& words) {
    const Object<GApplication> application{
        g_application_new(applicationId, G_APPLICATION_HANDLES_COMMAND_LINE)};
    Instance instance{application.get()};
    connect(application.get(), "command-line",
            [&instance](GApplicationCommandLine* line) { return answerCall(instance, line); });
    const auto end = [](gpointer self) -> gboolean {
        static_cast<Instance*>(self)->quit();
        return G_SOURCE_CONTINUE;
    };
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) g_unix_signal_add(signal, end, &instance);
    std::vector<const char*> all{"tessary-widgets-desktop"};
    for (const auto& word : words) all.push_back(word.c_str());
    all.push_back(nullptr);
    return g_application_run(application.get(), static_cast<int>(words.size()) + 1,
                             const_cast<char**>(all.data()));
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
    return runApplication(words);
}

}  // namespace tessary::desktop
