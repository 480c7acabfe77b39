// Views laid out on cards, in real type or as a dump.
#pragma once

#include <cmath>
#include <gtest/gtest.h>
#include <string>

#include "platform/drawing/pango_typesetter.h"
#include "platform/views/even_typesetter.h"
#include "platform/views/layout.h"
#include "support/dump.h"

namespace tessary {

/// 16:00:40 on a day in 2024.
inline constexpr foundation::Date shownAt{1731772840};

/// Cards that offer their content 132 x 132 and 312 x 132 points.
inline constexpr views::Surface smallCard{{164, 164}, views::EdgeInsets::all(16), 22, 2};
inline constexpr views::Surface mediumCard{{344, 164}, views::EdgeInsets::all(16), 22, 2};

inline drawing::PangoTypesetter& realType() {
    static drawing::PangoTypesetter typesetter{"en_US"};  // remembers what it measured
    return typesetter;
}

inline views::DisplayList rendered(const views::View& view, const views::Surface& card = smallCard,
                                   const views::Environment& environment = {.now = shownAt},
                                   views::Typesetter& typesetter = realType()) {
    return views::layOut(view, card, environment, typesetter);
}

/// A widget on its card.
inline views::DisplayList hosted(const views::View& view, bool medium, bool locked = false,
                                 views::Typesetter& typesetter = realType(),
                                 const std::string& locale = "en_US") {
    using views::WidgetFamily;
    return rendered(
        view, medium ? mediumCard : smallCard,
        {.redaction = {.placeholder = locked},
         .widgetFamily = medium ? WidgetFamily::systemMedium : WidgetFamily::systemSmall,
         .locale = {locale, "UTC"},
         .now = shownAt},
        typesetter);
}

/// The widget in both sizes under a heading, in type that is the same on every machine.
inline std::string dumped(const std::string& heading, const views::View& view,
                          bool locked = false) {
    views::EvenTypesetter even;
    std::string text;
    for (const bool medium : {false, true})
        text += "== " + heading + (medium ? ", medium\n" : ", small\n") +
                Dump{hosted(view, medium, locked, even)}.text() + '\n';
    return text;
}

inline views::TextElement textAt(const views::DisplayList& list, std::size_t index) {
    return std::get<views::TextElement>(list.elements.at(index).content);
}

}  // namespace tessary
