#include "desktop/dialogs/dialogs.h"

#include <algorithm>
#include <malloc.h>
#include <map>
#include <utility>

#include "desktop/dialogs/editor.h"
#include "desktop/dialogs/gallery.h"

namespace tessary::dialogs {

using namespace client;
using namespace places;

namespace {

class OpenDialogs final : public Dialogs {
public:
    OpenDialogs(Extension& extension, std::vector<std::string> feedOptions, Events events)
        : extension_{extension}, feedOptions_{std::move(feedOptions)}, events_{std::move(events)} {}

    void openGallery() override {
        const auto closed = [this] {
            gallery_.reset();
            malloc_trim(0);  // the desktop will not need that much again for long
        };
        if (!gallery_) gallery_ = makeGallery(extension_, {events_.added, closed});
        gallery_->setTrouble(trouble_);
        gallery_->setBegun(begun_);
        gallery_->present();
    }

    void setBegun(bool begun) override {
        begun_ = begun;
        if (gallery_) gallery_->setBegun(begun);
    }

    void openEditor(const PlacedWidget& widget) override {
        const int number = widget.number;
        const auto chosen = [this, number](const std::string& pin) { events_.chosen(number, pin); };
        const auto closed = [this, number] {
            editors_.erase(number);
            malloc_trim(0);
        };
        auto& editor = editors_[number];
        if (!editor)
            editor =
                makeEditor(extension_, {widget.kind, widget.pin, feedOptions_}, {chosen, closed});
        editor->setTrouble(trouble_);
        editor->present();
    }

    void keep(const std::vector<PlacedWidget>& widgets) override {
        std::erase_if(editors_, [&](const auto& editor) {
            return std::ranges::find(widgets, editor.first, &PlacedWidget::number) == widgets.end();
        });
    }

    void reload() override {
        if (gallery_) gallery_->reload();
        for (const auto& [number, editor] : editors_) editor->reload();
    }

    void setTrouble(const std::string& why) override {
        trouble_ = why;
        if (gallery_) gallery_->setTrouble(why);
        for (const auto& [number, editor] : editors_) editor->setTrouble(why);
    }

private:
    Extension& extension_;
    std::vector<std::string> feedOptions_;
    Events events_;
    std::string trouble_{};
    bool begun_{true};
    std::unique_ptr<Gallery> gallery_{};
    std::map<int, std::unique_ptr<Dialog>> editors_{};  ///< by the widget's number
};

}  // namespace

std::unique_ptr<Dialogs> makeDialogs(Extension& extension, std::vector<std::string> feedOptions,
                                     Dialogs::Events events) {
    return std::make_unique<OpenDialogs>(extension, std::move(feedOptions), std::move(events));
}

}  // namespace tessary::dialogs
