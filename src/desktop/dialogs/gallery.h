// The window in which a user sees the widgets there are, and adds one.
//
//     const auto gallery = makeGallery(extension, {.chosen = [](auto& kind, auto family) { ... },
//                                                  .closed = ...});
//     gallery->present();
//
// It opens at once and fills as the extension answers: for each widget its name, what it shows, and
// a button with a picture for each of its sizes.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "desktop/client/extension.h"
#include "desktop/dialogs/dialog.h"
#include "desktop/places/placed_widget.h"

namespace tessary::dialogs {

/// What the window tells; each is called from the main loop and has to be there.
struct GalleryEvents {
    /// One is to be added; the window stays.
    std::function<void(const std::string& kind, const places::Family& family)> chosen{};
    std::function<void()> closed{};  ///< may destroy the gallery
};

class Gallery : public Dialog {
public:
    /// Whether widgets have anything to show yet; where not, it says how to begin.
    virtual void setBegun(bool begun) = 0;
};

std::unique_ptr<Gallery> makeGallery(client::Extension& extension, GalleryEvents events);

}  // namespace tessary::dialogs
