// The desktop on the user's screen: a window for each placed widget, the extension that draws them,
// and whatever makes them be asked for anew.
//
//     openDisplay();
//     LiveDesktop live{folders, [](const Command& chosen) { ... }};
//     live.desktop().show(widgets);
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "desktop/client/extension_process.h"
#include "desktop/desktop.h"
#include "desktop/dialogs/dialogs.h"
#include "desktop/signs/path_watch.h"
#include "desktop/signs/session_lock.h"
#include "desktop/signs/wall_alarm.h"
#include "desktop/signs/zone.h"
#include "desktop/windows/monitors.h"
#include "snapshot/source.h"

namespace tessary::desktop {

/// What the user gave for the extension, absolute paths; empty: its own.
struct Folders {
    std::string container{};
    std::string info{};
};

/// Whose container has the files, or is to have them.
snapshot::Source sourceOf(const Folders& folders);

/// Whether there is any of the files that widgets show.
bool hasFiles(const snapshot::Source& source);

/// What the extension is started with.
std::vector<std::string> options(const Folders& folders);

class LiveDesktop {
public:
    /// `chosen` is called for what a user chooses in a window. Needs an open display. Throws
    /// std::runtime_error where the system lacks what it takes.
    LiveDesktop(Folders folders, std::function<void(const Command&)> chosen);

    const Folders& folders() const { return folders_; }
    /// Whose files the widgets show; none where the dictionary names no group.
    const std::optional<std::filesystem::path>& container() const { return container_; }
    bool hasFiles() const { return desktop::hasFiles(source_); }
    Desktop& desktop() { return desktop_; }

private:
    Ground ground();
    void follow();

    Folders folders_;
    snapshot::Source source_;
    std::optional<std::filesystem::path> container_{};
    client::ExtensionProcess extension_;
    std::unique_ptr<dialogs::Dialogs> dialogs_;
    Desktop desktop_;
    signs::WallAlarm alarm_;
    signs::PathWatch dictionaries_, zone_;
    std::optional<signs::PathWatch> files_{};
    signs::SessionLock lock_;
    windows::MonitorWatch monitors_;
};

}  // namespace tessary::desktop
