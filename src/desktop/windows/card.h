// One widget's card on the screen, as whoever fills it sees it.
//
//     const auto card = openWidgetWindow({.quitChosen = [] { ... }});
//     card->setKind(kind);
//     card->place(monitors().front(), place, {"small", {164, 164}});
//     card->show(entry);
//
// It is dragged with the pointer or moved by the arrow keys; a click, Enter or the space bar open
// its link or the host application, the other button or the menu key its menu.
#pragma once

#include <functional>
#include <string>

#include "desktop/client/messages.h"
#include "desktop/places/kinds.h"
#include "platform/foundation/result.h"

namespace tessary::windows {

class Card {
public:
    /// What it tells; each is called from the main loop and has to be there.
    struct Events {
        std::function<void()> scaleChanged{};
        std::function<void()> clicked{};  ///< or what does the same on the keyboard
        std::function<void()> closed{};   ///< by the compositor; to be placed again, or to leave
        std::function<void(const places::Place&)> moved{};
        std::function<void(const places::Family&)> familyChosen{};
        std::function<void()> editChosen{};
        std::function<void()> removeChosen{};
        std::function<void()> addChosen{};
        std::function<void()> quitChosen{};
    };

    virtual ~Card() = default;

    /// Puts it on a monitor that there is, at the place's offsets.
    virtual void place(const places::Monitor& monitor, const places::Place& place,
                       const places::Family& family) = 0;

    /// Takes it from the screen until it is placed again: its monitor is gone.
    virtual void leave() = 0;

    /// What a screen reader calls it, and what its menu offers.
    virtual void setKind(const places::Kind& kind) = 0;

    /// Pixels per point, 1 to 4.
    virtual int scale() const = 0;

    /// Shows an entry until the next; the card appears with its first, once placed. A picture that
    /// is the same as before is not drawn again.
    virtual void show(const client::Entry& entry) = 0;

    /// Says itself that it could not be brought up to date, and why: what it shows is dimmed. An
    /// empty text takes that back.
    virtual void setTrouble(const std::string& why) = 0;

    /// Opens the link of the entry that is shown, without one the host application.
    virtual foundation::Result<void> openLink() = 0;
};

}  // namespace tessary::windows
