// The windows beside the widgets: one gallery, and an editor for each widget that is being edited.
//
//     Dialogs dialogs{extension, [](const Command& chosen) { ... }};
//     dialogs.openGallery();
//     dialogs.openEditor(widget);
//
// What is open already comes to the front. A window that is closed leaves nothing behind.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <vector>

#include "desktop/command.h"
#include "desktop/editor.h"
#include "desktop/extension.h"
#include "desktop/gallery.h"
#include "desktop/placed_widget.h"

namespace tessary::desktop {

class Dialogs {
public:
    /// `chosen` is called for what a user chooses: an add or an edit.
    Dialogs(Extension& extension, std::function<void(const Command&)> chosen);
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
    std::function<void(const Command&)> chosen_;
    std::unique_ptr<Gallery> gallery_{};
    std::map<int, std::unique_ptr<Editor>> editors_{};  ///< by the widget's number
};

}  // namespace tessary::desktop
