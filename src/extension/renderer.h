// Draws the entries of widgets.
//
//     Renderer renderer;
//     const views::DisplayList list = renderer.layOut(entry, options);
//     renderer.paint(list, kind, entry.date, options)             // the bytes of a PNG
#pragma once

#include <list>
#include <string>

#include "extension/picture_options.h"
#include "platform/drawing/pango_typesetter.h"
#include "platform/views/layout.h"
#include "platform/widgets/widget_configuration.h"

namespace tessary::extension {

/// The card of a family, in points: 164 x 164 or 344 x 164, margins of 16, corners of 22.
views::Surface surface(widgets::WidgetFamily family, double scale);

/// Keeps a typesetter for each of the locales last used, with the texts that it set, from one entry
/// to the next. For one thread at a time.
class Renderer {
public:
    /// What is drawn of an entry, of no more than a card can show.
    views::DisplayList layOut(const widgets::WidgetEntry& entry, const PictureOptions& options);

    /// The picture as bytes of the format. Throws std::runtime_error where that cannot be done.
    std::string paint(const views::DisplayList& list, const std::string& kind,
                      foundation::Date date, const PictureOptions& options);

private:
    /// A locale ("ja_JP") decides between regional forms of the same characters.
    struct Type {
        explicit Type(const std::string& name) : locale(name), typesetter(name) {}
        std::string locale;
        drawing::PangoTypesetter typesetter;
    };
    drawing::PangoTypesetter& typesetter(const std::string& locale);

    std::list<Type> types_;  ///< the one last used first
};

}  // namespace tessary::extension
