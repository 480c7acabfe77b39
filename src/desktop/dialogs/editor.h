// The window in which a user chooses what a pin widget shows.
//
//     const auto editor = makeEditor(extension, {kind, pin}, {.chosen = [](auto& id) { ... },
//                                                             .closed = ...});
//     editor->present();
//
// It opens at once and fills when the extension answers. A choice that is no longer offered is the
// first in the list, by the name that the extension has for it then.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "desktop/client/extension.h"
#include "desktop/dialogs/dialog.h"

namespace tessary::dialogs {

/// What the window tells; each is called from the main loop and has to be there.
struct EditorEvents {
    std::function<void(const std::string& id)> chosen{};  ///< `closed` follows
    std::function<void()> closed{};                       ///< may destroy the editor
};

/// A widget of a kind that takes a pin, and its choice; without one what the kind takes at first is
/// selected.
struct Edited {
    std::string kind{};
    std::optional<std::string> pin{};
    std::vector<std::string> feedOptions{};  ///< for what it is that another is pinned
};

std::unique_ptr<Dialog> makeEditor(client::Extension& extension, Edited edited,
                                   EditorEvents events);

}  // namespace tessary::dialogs
