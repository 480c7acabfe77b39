// The desktop on the user's screen: a window for each placed widget, the extension that draws them,
// and whatever makes them be asked for anew.
//
//     openDisplay();
//     LiveDesktop live{folders, [](const Command& chosen) { ... }};
//     live.desktop().show(widgets);
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "desktop/client/extension_process.h"
#include "desktop/desktop.h"
#include "desktop/dialogs/dialogs.h"
#include "desktop/signs/path_watch.h"
#include "desktop/signs/session_lock.h"
#include "desktop/signs/wall_alarm.h"
#include "desktop/windows/monitors.h"

namespace tessary::desktop {

struct Folders {
    std::string container{};
    std::string info{};  ///< the information dictionary; empty: the extension's own
};

/// What the extension is started with.
std::vector<std::string> options(const Folders& folders);

class LiveDesktop {
public:
    /// `chosen` is called for what a user chooses in a window. Needs an open display. Throws
    /// std::runtime_error where the system lacks what it takes.
    LiveDesktop(Folders folders, std::function<void(const Command&)> chosen);

    const Folders& folders() const { return folders_; }
    Desktop& desktop() { return desktop_; }

private:
    Ground ground();

    Folders folders_;
    client::ExtensionProcess extension_;
    std::unique_ptr<dialogs::Dialogs> dialogs_;
    Desktop desktop_;
    signs::WallAlarm alarm_;
    signs::PathWatch files_, zone_;
    signs::SessionLock lock_;
    windows::MonitorWatch monitors_;
};

}  // namespace tessary::desktop
