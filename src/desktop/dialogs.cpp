#include "desktop/dialogs.h"

#include <algorithm>
#include <utility>

namespace tessary::desktop {

Dialogs::Dialogs(Extension& extension, std::function<void(const Command&)> chosen)
    : extension_{extension}, chosen_{std::move(chosen)} {}

void Dialogs::openGallery() {
    if (!gallery_) {
        const auto add = [this](const std::string& kind, Family family) {
            chosen_({.action = Action::add, .kind = kind, .family = family});
        };
        gallery_ = std::make_unique<Gallery>(
            extension_, Gallery::Events{.chosen = add, .closed = [this] { gallery_.reset(); }});
    }
    gallery_->present();
}

void Dialogs::openEditor(const PlacedWidget& widget) {
    auto& editor = editors_[widget.number];
    if (!editor) {
        const auto number = widget.number;
        const auto edit = [this, number](const std::string& pin) {
            chosen_({.action = Action::edit, .number = number, .pin = pin});
        };
        editor = std::make_unique<Editor>(
            extension_, widget.kind, widget.pin,
            Editor::Events{.chosen = edit, .closed = [this, number] { editors_.erase(number); }});
    }
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
