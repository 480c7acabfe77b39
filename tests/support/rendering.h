// Views laid out with real type, and their display lists as text.
#pragma once

#include <cstdio>
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

/// A small card, of which the content is offered 132 x 132 points.
inline constexpr views::Surface smallCard{{164, 164}, views::EdgeInsets::all(16), 22, 2};
/// A medium card, of which the content is offered 312 x 132 points.
inline constexpr views::Surface mediumCard{{344, 164}, views::EdgeInsets::all(16), 22, 2};

/// Always the same typesetter: it remembers what it measured.
inline views::DisplayList rendered(const views::View& view, const views::Surface& card = smallCard,
                                   const views::Environment& environment = {}) {
    static drawing::PangoTypesetter typesetter{"en_US"};
    return views::layOut(view, card, environment, typesetter);
}

inline views::TextElement textAt(const views::DisplayList& list, std::size_t index) {
    return std::get<views::TextElement>(list.elements.at(index).content);
}

/// Prints what does not depend on the typeface that stands in.
struct ElementPrinter {
    std::string operator()(const views::TextElement& text) const {
        std::string result = '"' + text.text + '"' + shared(text.font, text.color);
        if (text.font.design == views::FontDesign::rounded) result += " rounded";
        if (text.font.monospacedDigits) result += " digits";
        if (text.lineLimit) result += " limit " + std::to_string(*text.lineLimit);
        return text.truncation == views::Truncation::middle ? result + " middle" : result;
    }
    std::string operator()(const views::SymbolElement& symbol) const {
        return '<' + symbol.name + '>' + shared(symbol.font, symbol.color);
    }
    std::string operator()(const views::RectangleElement& rectangle) const {
        return "rectangle" + printed(rectangle.color);
    }
    std::string operator()(const auto&) const { return "another element"; }

private:
    static std::string printed(const views::Color& color) {
        return ' ' + color.hex() + (color.opacity == 1 ? "" : " faded");
    }
    static std::string shared(const views::Font& font, const views::Color& color) {
        return ' ' + std::to_string(std::lround(font.size)) + ' ' +
               std::string{foundation::name(font.weight)} + printed(color);
    }
};

/// The elements of a list in paint order, each on a line of its own that begins with a line break:
///
///     "\n<bell.slash> 22 medium #7C838E\n\"+1 more\" 11 regular #7C838E limit 1"
inline std::string described(const views::DisplayList& list) {
    std::string text;
    for (const views::Element& element : list.elements)
        text += '\n' + std::visit(ElementPrinter{}, element.content) +
                (element.accent ? " accent" : "");
    return text;
}

}  // namespace tessary
