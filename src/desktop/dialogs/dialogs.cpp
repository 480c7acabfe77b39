#include "desktop/dialogs/dialogs.h"

#include <algorithm>
#include <malloc.h>
#include <utility>

namespace tessary::dialogs {

using namespace places;
using namespace client;

Dialogs::Dialogs(Extension& extension, Events events)
    : extension_{extension}, events_{std::move(events)} {}

void Dialogs::openGallery() {
    const auto closed = [this] {
        gallery_.reset();
        malloc_trim(0);  // the desktop will not need that much again for long
    };
    if (!gallery_)
        gallery_ = std::make_unique<Gallery>(extension_, Gallery::Events{events_.added, closed});
    gallery_->present();
}

void Dialogs::openEditor(const PlacedWidget& widget) {
    const int number = widget.number;
    const auto chosen = [this, number](const std::string& pin) { events_.chosen(number, pin); };
    const auto closed = [this, number] {
        editors_.erase(number);
        malloc_trim(0);
    };
    auto& editor = editors_[number];
    if (!editor)
        editor = std::make_unique<Editor>(extension_, widget.kind, widget.pin,
                                          Editor::Events{chosen, closed});
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

}  // namespace tessary::dialogs
