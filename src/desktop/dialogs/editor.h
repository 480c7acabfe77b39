// The window in which a user chooses what a pin widget shows.
//
//     Editor editor{extension, kind, pin, {.chosen = [](auto& id) { ... }, .closed = ...}};
//     editor.present();
//
// It opens at once and fills when the extension answers. A choice that is no longer offered is the
// first in the list, by the name that the extension has for it then.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "desktop/client/extension.h"

namespace tessary::dialogs {

using client::Extension;

class Editor {
public:
    /// What the window tells; each is called from the main loop and has to be there.
    struct Events {
        std::function<void(const std::string& id)> chosen{};  ///< `closed` follows
        std::function<void()> closed{};                       ///< may destroy the editor
    };

    /// For a widget of a kind that takes a pin, and its choice; without one what the kind takes at
    /// first is selected.
    Editor(Extension& extension, std::string kind, std::optional<std::string> pin, Events events);
    Editor(const Editor&) = delete;
    Editor& operator=(const Editor&) = delete;
    ~Editor();

    void present();

    /// Asks for everything anew.
    void reload();

private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

}  // namespace tessary::dialogs
