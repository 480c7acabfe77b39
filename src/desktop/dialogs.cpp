#include "desktop/dialogs.h"

#include <algorithm>
#include <malloc.h>
#include <utility>

namespace tessary::desktop {

Dialogs::Dialogs(Extension& extension, std::function<void(const Command&)> chosen)
    : extension_{extension}, chosen_{std::move(chosen)} {}

void Dialogs::openGallery() {
    const auto add = [this](const std::string& kind, Family family) {
        chosen_({.action = Action::add, .kind = kind, .family = family});
    };
    const auto closed = [this] {
        gallery_.reset();
        malloc_trim(0);  // the desktop will not need that much again for long
    };
    if (!gallery_) gallery_ = std::make_unique<Gallery>(extension_, Gallery::Events{add, closed});
    gallery_->present();
}

void Dialogs::openEditor(const PlacedWidget& widget) {
    const int number = widget.number;
    const auto edit = [this, number](const std::string& pin) {
        chosen_({.action = Action::edit, .number = number, .pin = pin});
    };
    const auto closed = [this, number] {
        editors_.erase(number);
        malloc_trim(0);
    };
    auto& editor = editors_[number];
    if (!editor)
        editor = std::make_unique<Editor>(extension_, widget.kind, widget.pin,
                                          Editor::Events{edit, closed});
    editor->present();
}

void Dialogs::keep(const std::vector<PlacedWidget>& widgets) {
    std::erase_if(editors_, [&](const auto& editor) {
        return std::ranges::find(widgets, editor.first, &PlacedWidget::number) == widgets.end();
    });
}

void Dialogs::reload() {
    if (gallery_) gallery_->reload();
    for (const auto& [number, editor] : editors_) editor->reload();
}

}  // namespace tessary::desktop
