// The windows beside the widgets: one gallery, and an editor for each widget that is being edited.
//
//     const auto dialogs = makeDialogs(extension, options,
//                                      {.added = [](auto& kind, auto family) { ... },
//                                       .chosen = ...});
//     dialogs->openGallery();
//     dialogs->openEditor(widget);
//
// What is open already comes to the front. A window that is closed leaves nothing behind.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "desktop/client/extension.h"
#include "desktop/places/placed_widget.h"

namespace tessary::dialogs {

class Dialogs {
public:
    /// What a user chooses in them; each is called from the main loop and has to be there.
    struct Events {
        std::function<void(const std::string& kind, const places::Family& family)> added{};
        std::function<void(int number, const std::string& pin)> chosen{};
    };

    virtual ~Dialogs() = default;

    virtual void openGallery() = 0;

    /// Whether widgets have anything to show yet; where not, the gallery, now or later, says how to
    /// begin.
    virtual void setBegun(bool begun) = 0;

    /// For a widget that takes a pin.
    virtual void openEditor(const places::PlacedWidget& widget) = 0;

    /// Ends the editors of all widgets but these.
    virtual void keep(const std::vector<places::PlacedWidget>& widgets) = 0;

    /// Lets what is open ask for everything anew.
    virtual void reload() = 0;

    /// Lets what is open, now or later, say why nothing is answered; an empty text takes that back.
    virtual void setTrouble(const std::string& why) = 0;
};

/// Windows of an open display. The options are those that the feed's program is called with.
std::unique_ptr<Dialogs> makeDialogs(client::Extension& extension,
                                     std::vector<std::string> feedOptions, Dialogs::Events events);

}  // namespace tessary::dialogs
