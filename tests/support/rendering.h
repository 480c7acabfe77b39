// Views laid out with real type, and their display lists as text.
#pragma once

#include <cmath>
#include <gtest/gtest.h>
#include <string>

#include "platform/drawing/pango_typesetter.h"
#include "platform/foundation/surroundings.h"
#include "platform/views/layout.h"

namespace tessary {

/// Surroundings for views: they have a locale, and whoever asks for more fails the test.
inline foundation::Surroundings viewSurroundings(const std::string& locale = "en_US") {
    return {.clock = [] { return ADD_FAILURE() << "read the clock", foundation::Date{}; },
            .information = [](auto) { return ADD_FAILURE() << "read the dictionary", ""; },
            .container = [](auto) { return ADD_FAILURE() << "looked for a file", ""; },
            .locale = {locale, "UTC"}};
}

/// Cards that offer their content 132 x 132 and 312 x 132 points.
inline constexpr views::Surface smallCard{{164, 164}, views::EdgeInsets::all(16), 22, 2};
inline constexpr views::Surface mediumCard{{344, 164}, views::EdgeInsets::all(16), 22, 2};

inline views::DisplayList rendered(const views::View& view, const views::Surface& card = smallCard,
                                   const views::Environment& environment = {}) {
    static drawing::PangoTypesetter typesetter{"en_US"};  // remembers what it measured
    return views::layOut(view, card, environment, typesetter);
}

inline views::TextElement textAt(const views::DisplayList& list, std::size_t index) {
    return std::get<views::TextElement>(list.elements.at(index).content);
}

/// The elements in paint order, each on a line that begins with a line break. Left out is what
/// depends on the typeface that stands in:
///
///     "\n<bell.slash> 22 medium #7C838E\n\"+1 more\" 11 regular #7C838E limit 1"
inline std::string described(const views::DisplayList& list) {
    std::string result;
    const auto add = [&](const std::string& what, const auto& element) {
        result += what + ' ' + std::to_string(std::lround(element.font.size)) + ' ';
        result += std::string{foundation::name(element.font.weight)} + ' ' + element.color.hex();
    };
    for (const views::Element& element : list.elements) {
        result += '\n';
        if (const auto* text = std::get_if<views::TextElement>(&element.content)) {
            add('"' + text->text + '"', *text);
            if (text->font.design == views::FontDesign::rounded) result += " rounded";
            if (text->font.monospacedDigits) result += " digits";
            if (text->lineLimit) result += " limit " + std::to_string(*text->lineLimit);
            if (text->truncation == views::Truncation::middle) result += " middle";
        } else if (const auto* symbol = std::get_if<views::SymbolElement>(&element.content)) {
            add('<' + symbol->name + '>', *symbol);
        } else {
            result += "rectangle " + std::get<views::RectangleElement>(element.content).color.hex();
        }
        if (element.accent) result += " accent";
    }
    return result;
}

}  // namespace tessary
