#include "desktop/dialogs/gallery.h"

#include <utility>
#include <vector>

#include "desktop/client/feed.h"
#include "desktop/client/inquiry.h"
#include "desktop/dialogs/dialog_window.h"
#include "desktop/glib/connect.h"
#include "desktop/places/kinds.h"
#include "desktop/windows/picture.h"

namespace tessary::dialogs {

using namespace places;
using namespace client;
using namespace windows;

namespace {

constexpr Size gallerySize{620, 760};

GtkWidget* heading(const std::string& text) {
    const auto label = startLabel(text, false);
    const auto attributes = pango_attr_list_new();
    pango_attr_list_insert(attributes, pango_attr_weight_new(PANGO_WEIGHT_BOLD));
    pango_attr_list_insert(attributes, pango_attr_scale_new(PANGO_SCALE_LARGE));
    gtk_label_set_attributes(GTK_LABEL(label), attributes);
    pango_attr_list_unref(attributes);
    gtk_label_set_ellipsize(GTK_LABEL(label), PANGO_ELLIPSIZE_END);
    atk_object_set_role(gtk_widget_get_accessible(label), ATK_ROLE_HEADING);
    return label;
}

class OpenGallery final : public Gallery {
public:
    OpenGallery(Extension& extension, GalleryEvents events)
        : events_{std::move(events)},
          inquiry_{extension, [this] { ask(); }},
          dialog_{gallerySize, events_.closed} {
        dialog_.setTitle("Add a Widget");
        const auto scrolled = gtk_scrolled_window_new(nullptr, nullptr);
        gtk_container_add(GTK_CONTAINER(scrolled), list_);
        dialog_.add(scrolled, true);
        glib::connect(dialog_.widget(), "notify::scale-factor", [this] { inquiry_.start(); });
        dialog_.setStatus("One moment…");
        inquiry_.start();
    }

    void present() override { dialog_.present(); }
    void reload() override { inquiry_.start(); }
    void setTrouble(const std::string& why) override { dialog_.setTrouble(why); }
    void setBegun(bool begun) override {
        const auto words = std::string{noneWatched} + " To begin, type this in a terminal:";
        dialog_.setHint(begun ? "" : words, begun ? "" : watchCommand);
    }

private:
    /// A widget in one of its sizes.
    struct Offer {
        std::string kind{};
        Family family{};
        GtkWidget* image{gtk_image_new()};
        GtkWidget* button{gtk_button_new()};
    };

    void ask() {
        inquiry_.ask({.request = "list"}, [this](const Reply& reply) {
            if (reply.error) return dialog_.setStatus(*reply.error);
            dialog_.setStatus(reply.kinds.empty() ? "There are no widgets to add." : "");
            if (kinds_ != reply.kinds) fill(reply.kinds);
            for (const auto& offer : offers_) askPicture(*offer);
        });
    }

    void askPicture(const Offer& offer) {
        const Request request{.request = "snapshot",
                              .widget = offer.kind,
                              .family = offer.family.name,
                              .scale = scaleOf(dialog_.widget()),
                              .preview = true,
                              .display = false};
        // The offers are replaced by a list's answer alone, for which all these have been awaited.
        inquiry_.ask(request, [this, &offer](const Reply& reply) {
            if (reply.error) return dialog_.setStatus(*reply.error);
            if (!reply.timeline) return;
            const auto& entry = reply.timeline->entries.front();
            const auto pixels = decode(entry.picture, offer.family.size);
            if (pixels) gtk_image_set_from_surface(GTK_IMAGE(offer.image), pixels.get());
            atk_object_set_description(gtk_widget_get_accessible(offer.button), entry.text.c_str());
        });
    }

    void fill(const std::vector<Kind>& found) {
        kinds_ = found;
        empty(list_);
        offers_.clear();
        for (const auto& kind : kinds_) addWidget(kind);
        gtk_widget_show_all(list_);
    }

    void addWidget(const Kind& widget) {
        const auto section = gtk_box_new(GTK_ORIENTATION_VERTICAL, 6);
        const auto description = startLabel(widget.description, true);
        wrap(description);
        const auto row = gtk_box_new(GTK_ORIENTATION_HORIZONTAL, 12);
        for (const auto& family : familiesOf(widget)) addOffer(row, widget, family);
        for (const auto part : {heading(widget.displayName), description, row})
            gtk_box_pack_start(GTK_BOX(section), part, FALSE, FALSE, 0);
        gtk_box_pack_start(GTK_BOX(list_), section, FALSE, FALSE, 0);
    }

    void addOffer(GtkWidget* row, const Kind& widget, const Family& family) {
        const auto& offer = offers_.emplace_back(new Offer{widget.kind, family});
        const auto [width, height] = family.size;
        gtk_widget_set_size_request(offer->image, width, height);
        const auto label = gtk_label_new(titled(family.name).c_str());
        const auto content = gtk_box_new(GTK_ORIENTATION_VERTICAL, 6);
        gtk_box_pack_start(GTK_BOX(content), offer->image, FALSE, FALSE, 0);
        gtk_box_pack_start(GTK_BOX(content), label, FALSE, FALSE, 0);
        gtk_container_add(GTK_CONTAINER(offer->button), content);
        gtk_button_set_relief(GTK_BUTTON(offer->button), GTK_RELIEF_NONE);
        const auto name = "Add " + shortened(widget.displayName) + ", " + family.name;
        atk_object_set_name(gtk_widget_get_accessible(offer->button), name.c_str());
        glib::connect(offer->button, "clicked",
                      [this, kind = widget.kind, family] { events_.chosen(kind, family); });
        gtk_box_pack_start(GTK_BOX(row), offer->button, FALSE, FALSE, 0);
    }

    GalleryEvents events_;
    GtkWidget* list_{gtk_box_new(GTK_ORIENTATION_VERTICAL, 18)};
    std::vector<Kind> kinds_{};
    std::vector<std::unique_ptr<Offer>> offers_{};
    Inquiry inquiry_;
    DialogWindow dialog_;  ///< the first to go, as its widgets tell the rest
};

}  // namespace

std::unique_ptr<Gallery> makeGallery(Extension& extension, GalleryEvents events) {
    return std::make_unique<OpenGallery>(extension, std::move(events));
}

}  // namespace tessary::dialogs
