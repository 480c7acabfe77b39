#include "desktop/live_desktop.h"

#include <algorithm>
#include <system_error>
#include <utility>

#include "desktop/glib/note.h"
#include "desktop/windows/widget_window.h"

namespace tessary::desktop {

namespace {

dialogs::Dialogs::Events commands(const std::function<void(const Command&)>& chosen) {
    const auto add = [chosen](const std::string& kind, const places::Family& family) {
        chosen({.action = Action::add, .widget = kind, .family = family.name});
    };
    const auto edit = [chosen](int number, const std::string& pin) {
        chosen({.action = Action::edit, .number = number, .pin = pin});
    };
    return {.added = add, .chosen = edit};
}

std::optional<std::filesystem::path> given(const std::string& path) {
    return path.empty() ? std::nullopt : std::optional{std::filesystem::path{path}};
}

}  // namespace

snapshot::Source sourceOf(const Folders& folders) {
    return {.places = snapshot::Places::given(given(folders.container), given(folders.info))};
}

bool hasFiles(const snapshot::Source& source) {
    const auto container = source.locate("").container;
    std::error_code ignored;
    return container && std::ranges::any_of(snapshot::fileNames, [&](auto name) {
               return std::filesystem::exists(*container / snapshot::pathOf(name), ignored);
           });
}

std::vector<std::string> options(const Folders& folders) {
    std::vector<std::string> words;
    if (!folders.container.empty()) words.insert(words.end(), {"--container", folders.container});
    if (!folders.info.empty()) words.insert(words.end(), {"--info", folders.info});
    return words;
}

LiveDesktop::LiveDesktop(Folders folders, std::function<void(const Command&)> chosen)
    : folders_{std::move(folders)},
      source_{sourceOf(folders_)},
      extension_{client::extensionCommand(options(folders_))},
      dialogs_{dialogs::makeDialogs(extension_, options(folders_), commands(chosen))},
      desktop_{ground(), std::move(chosen)},
      alarm_{desktop_.signs().clock},
      dictionaries_{source_.places.dictionaries,
                    {.changed = [this] { follow(), desktop_.reload(); }}},
      zone_{{signs::zoneFile}, desktop_.signs().zone},
      lock_{desktop_.signs().lock},
      monitors_{desktop_.signs().monitors} {
    extension_.follow(desktop_.signs().trouble);
    follow();
}

/// Watches the container that the dictionary names now.
void LiveDesktop::follow() {
    container_ = source_.locate("").container;
    std::vector<std::filesystem::path> files;
    if (container_) files.push_back(*container_ / "widgets/*.json");
    files_.emplace(std::move(files), desktop_.signs().files);
}

Ground LiveDesktop::ground() {
    return {.extension = extension_,
            .dialogs = *dialogs_,
            .openCard = windows::openWidgetWindow,
            .monitors = windows::monitors,
            .now = signs::wallClock,
            .wake = [this](double moment) { alarm_.set(moment); },
            .zone = signs::machineZone,
            .begun = [this] { return hasFiles(); },
            .note = glib::note};
}

}  // namespace tessary::desktop
