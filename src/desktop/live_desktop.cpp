#include "desktop/live_desktop.h"

#include <utility>

#include "desktop/glib/note.h"
#include "desktop/windows/widget_window.h"

namespace tessary::desktop {

namespace {

// What the extension goes by from its start to its end, unless TZ names another zone.
constexpr const char* zoneFile = "/etc/localtime";

dialogs::Dialogs::Events commands(const std::function<void(const Command&)>& chosen) {
    const auto add = [chosen](const std::string& kind, const places::Family& family) {
        chosen({.action = Action::add, .widget = kind, .family = family.name});
    };
    const auto edit = [chosen](int number, const std::string& pin) {
        chosen({.action = Action::edit, .number = number, .pin = pin});
    };
    return {.added = add, .chosen = edit};
}

}  // namespace

std::vector<std::string> options(const Folders& folders) {
    std::vector<std::string> words{"--container", folders.container};
    if (!folders.info.empty()) words.insert(words.end(), {"--info", folders.info});
    return words;
}

LiveDesktop::LiveDesktop(Folders folders, std::function<void(const Command&)> chosen)
    : folders_{std::move(folders)},
      extension_{client::extensionCommand(options(folders_))},
      dialogs_{dialogs::makeDialogs(extension_, commands(chosen))},
      desktop_{ground(), std::move(chosen)},
      alarm_{desktop_.signs().clock},
      files_{folders_.container + "/widgets/*.json", desktop_.signs().files},
      zone_{zoneFile, desktop_.signs().zone},
      lock_{desktop_.signs().lock},
      monitors_{desktop_.signs().monitors} {}

Ground LiveDesktop::ground() {
    return {.extension = extension_,
            .dialogs = *dialogs_,
            .openCard = windows::openWidgetWindow,
            .monitors = windows::monitors,
            .now = signs::wallClock,
            .wake = [this](double moment) { alarm_.set(moment); },
            .note = glib::note};
}

}  // namespace tessary::desktop
