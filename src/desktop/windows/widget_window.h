// One widget on the desktop: a picture without frame or focus, below all other windows.
//
//     WidgetWindow window{{.quitChosen = [] { ... }}};
//     window.place(monitors().front(), place, Family::small);
//     window.show(entry);
//
// It is dragged with the pointer or moved by the arrow keys; a click, Enter or the space bar open
// its link, the other button or the menu key its menu.
//
// On Wayland it is a surface of the layer shell's bottom layer with the namespace "desktop", where
// the compositor has that; on X11 a window of the type DESKTOP; elsewhere a plain one.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "desktop/client/messages.h"
#include "desktop/places/placed_widget.h"

namespace tessary::windows {

using client::Entry;
using places::Family;
using places::Monitor;
using places::Place;

/// Connects to the display, once for the program. False where there is none.
bool openDisplay();

class WidgetWindow {
public:
    /// What the window tells; each is called from the main loop and has to be there, but for what a
    /// widget without a pin leaves out.
    struct Events {
        std::function<void()> scaleChanged{};
        std::function<void()> closed{};  ///< by the compositor; to be placed again, or to leave
        std::function<void(const Place&)> moved{};
        std::function<void(Family)> familyChosen{};
        std::function<void()> editChosen{};  ///< left out where there is nothing to edit
        std::function<void()> removeChosen{};
        std::function<void()> addChosen{};
        std::function<void()> quitChosen{};
    };

    explicit WidgetWindow(Events events);
    WidgetWindow(const WidgetWindow&) = delete;
    WidgetWindow& operator=(const WidgetWindow&) = delete;
    ~WidgetWindow();

    /// Puts it on a monitor that there is, at the place's offsets.
    void place(const Monitor& monitor, const Place& place, Family family);

    /// Takes it from the screen until it is placed again: its monitor is gone.
    void leave();

    /// What a screen reader calls it.
    void setName(const std::string& name);

    /// Pixels per point, 1 to 4.
    int scale() const;

    /// Shows an entry until the next; the window appears with its first, once placed. A picture
    /// that is the same as before is not drawn again.
    void show(const Entry& entry);

    /// Opens the link of the entry that is shown; nothing without one.
    void openLink();

private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

}  // namespace tessary::windows
