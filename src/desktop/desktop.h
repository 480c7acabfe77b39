// The desktop that runs: a window for each placed widget, the extension that draws them, and
// whatever makes them be asked for anew.
//
//     openDisplay();
//     Desktop desktop{folders, [](const Command& chosen) { ... }};
//     desktop.show(widgets);
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "desktop/client/extension.h"
#include "desktop/command.h"
#include "desktop/dialogs/dialogs.h"
#include "desktop/glib/timer.h"
#include "desktop/places/placed_widget.h"
#include "desktop/signs/path_watch.h"
#include "desktop/signs/session_lock.h"
#include "desktop/signs/wall_alarm.h"
#include "desktop/windows/monitors.h"

namespace tessary::desktop {

using client::Extension;
using client::Reply;
using dialogs::Dialogs;
using glib::Timer;
using places::PlacedWidget;
using signs::PathWatch;
using signs::SessionLock;
using signs::WallAlarm;
using windows::MonitorWatch;

class Desktop {
public:
    struct Folders {
        std::string container{};
        std::string info{};  ///< the information dictionary; empty: the extension's own
        bool operator==(const Folders&) const = default;
    };

    /// `chosen` is called for what a user chooses in a widget's menu. Needs an open display. Throws
    /// std::runtime_error where the system lacks what it takes.
    Desktop(Folders folders, std::function<void(const Command&)> chosen);
    ~Desktop();

    const Folders& folders() const { return folders_; }

    /// Shows these widgets and no others; those that stay keep their windows.
    void show(const std::vector<PlacedWidget>& widgets);

    /// Asks for all widgets anew, and for what the gallery and the editors show.
    void reload();

    /// Opens the window in which widgets are added.
    void openGallery() { dialogs_.openGallery(); }

    /// Opens the window in which that widget's pin is chosen; nothing where there is no such widget
    /// or it shows no pin.
    void openEditor(int number);

    /// Opens the link of what that widget shows, as a click on it does.
    void openLink(int number) const;

private:
    struct Shown;

    std::shared_ptr<Shown> open(const PlacedWidget& widget);
    void askNames();
    void arrange();
    void ask(const std::shared_ptr<Shown>& shown);
    void keepDefault(const std::shared_ptr<Shown>& shown);
    void answered(const std::shared_ptr<Shown>& shown, const Reply& reply);
    void look();

    Folders folders_;
    std::function<void(const Command&)> chosen_;
    std::map<int, std::shared_ptr<Shown>> shown_{};  ///< by number
    std::map<std::string, std::string> names_{};     ///< by kind
    bool redacted_{};
    Extension extension_;
    Dialogs dialogs_;
    WallAlarm alarm_;
    PathWatch files_;
    PathWatch zone_;
    SessionLock lock_;
    MonitorWatch monitorWatch_;
    Timer arranging_{};
};

}  // namespace tessary::desktop
