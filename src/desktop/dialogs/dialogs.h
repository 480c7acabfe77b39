// The windows beside the widgets: one gallery, and an editor for each widget that is being edited.
//
//     Dialogs dialogs{extension, {.added = [](auto& kind, auto family) { ... }, .chosen = ...}};
//     dialogs.openGallery();
//     dialogs.openEditor(widget);
//
// What is open already comes to the front. A window that is closed leaves nothing behind.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "desktop/client/extension.h"
#include "desktop/dialogs/editor.h"
#include "desktop/dialogs/gallery.h"
#include "desktop/places/placed_widget.h"

namespace tessary::dialogs {

using client::Extension;
using places::Family;
using places::PlacedWidget;

class Dialogs {
public:
    /// What a user chooses in them; each is called from the main loop and has to be there.
    struct Events {
        std::function<void(const std::string& kind, Family family)> added{};
        std::function<void(int number, const std::string& pin)> chosen{};
    };

    Dialogs(Extension& extension, Events events);
    Dialogs(const Dialogs&) = delete;
    Dialogs& operator=(const Dialogs&) = delete;
    ~Dialogs() = default;

    void openGallery();

    /// For a widget that takes a pin.
    void openEditor(const PlacedWidget& widget);

    /// Ends the editors of all widgets but these.
    void keep(const std::vector<PlacedWidget>& widgets);

    /// Lets what is open ask for everything anew.
    void reload();

private:
    Extension& extension_;
    Events events_;
    std::unique_ptr<Gallery> gallery_{};
    std::map<int, std::unique_ptr<Editor>> editors_{};  ///< by the widget's number
};

}  // namespace tessary::dialogs
