// What the desktop does when something happens: it asks for the widgets' timelines and shows their
// entries as they fall due. Who answers, what shows and what time it is are handed in.
//
//     Desktop desktop{{.extension = extension, .dialogs = dialogs, .openCard = ...}, chosen};
//     desktop.show(widgets);            // asks for each of them
//     desktop.signs().clock.clockSet()  // asks for all of them anew
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "desktop/client/extension.h"
#include "desktop/command.h"
#include "desktop/dialogs/dialogs.h"
#include "desktop/places/placed_widget.h"
#include "desktop/signs/path_watch.h"
#include "desktop/signs/wall_alarm.h"
#include "desktop/windows/card.h"

namespace tessary::desktop {

/// What it stands on; each has to be there, for longer than the desktop is.
struct Ground {
    client::Extension& extension;
    dialogs::Dialogs& dialogs;
    std::function<std::unique_ptr<windows::Card>(windows::Card::Events)> openCard{};
    std::function<std::vector<places::Monitor>()> monitors{};  ///< at least one
    std::function<double()> now{};                             ///< seconds since 1970
    std::function<void(double moment)> wake{};                 ///< once, by the clock's sign
    std::function<std::optional<std::string>()> zone{};        ///< the machine's, if it has a name
    std::function<bool()> begun{};                             ///< widgets have something to show
    std::function<void(const std::string& words)> note{};
};

/// What makes it look again: what to call when that happens.
struct Signs {
    signs::WallAlarm::Events clock{};
    signs::PathWatch::Events files{};  ///< of the container
    signs::PathWatch::Events zone{};   ///< the file of the machine's zone
    std::function<void(bool locked)> lock{};
    std::function<void()> monitors{};
    std::function<void(const client::Trouble&)> trouble{};  ///< of the extension, or its end
};

class Desktop {
public:
    /// `chosen` is called for what a user chooses in a widget's menu or the dialogs.
    Desktop(Ground ground, std::function<void(const Command&)> chosen);
    ~Desktop();

    Signs signs();

    /// Shows these widgets and no others; those that stay keep their cards.
    void show(const std::vector<places::PlacedWidget>& widgets);

    /// Asks for all widgets anew, and for what the gallery and the editors show.
    void reload();

    /// Opens the window in which widgets are added.
    void openGallery();

    /// What the extension has listed; none before its answer.
    const places::Kinds& kinds() const { return kinds_; }

    /// Opens the window in which that widget's pin is chosen; nothing where there is no such widget
    /// or it shows no pin.
    void openEditor(int number);

    /// Opens the link of what that widget shows, as a click on it does.
    foundation::Result<void> openLink(int number);

    /// Why widgets cannot be brought up to date at the moment; nothing where they can.
    std::string trouble() const;

private:
    struct Shown;

    std::shared_ptr<Shown> open(const places::PlacedWidget& widget);
    void askKinds();
    void learn(places::Kinds kinds);
    void tellKind(Shown& shown) const;
    void arrange();
    void ask(const std::shared_ptr<Shown>& shown);
    void keepDefault(const std::shared_ptr<Shown>& shown);
    void answered(const std::shared_ptr<Shown>& shown, const client::Reply& reply);
    void look();
    void tellTrouble(const client::Trouble& trouble);
    std::string trouble(const Shown& shown, double now) const;
    void hurry(const std::shared_ptr<Shown>& shown);

    Ground ground_;
    std::function<void(const Command&)> chosen_;
    std::map<int, std::shared_ptr<Shown>> shown_{};  ///< by number
    places::Kinds kinds_{};
    client::Trouble trouble_{};
    bool redacted_{};
};

}  // namespace tessary::desktop
