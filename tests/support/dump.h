// Display lists as text, a line an element.
#pragma once

#include <iomanip>
#include <sstream>
#include <string>

#include "platform/views/display_list.h"

namespace tessary {

/// What there is, where, and how it is drawn; left out is what is as usual (black backgrounds and
/// light schemes, whole texts, full opacity, no limit, the tail cut):
///
///     card 164x164 #1C1E22 dark tessary://alarms
///     text "api-5xx-rate" > "api…rate" 16,20 60x13 12 semibold rounded #E6E8EB/0.5 limit 1 middle
///     path 158,16 170x90 M 0,82 L 170,7 stroke #7FB0FF 1.5 round round
class Dump {
public:
    explicit Dump(const views::DisplayList& list) {
        out_ << "card " << list.size.width << 'x' << list.size.height;
        if (list.background) color(*list.background);
        if (list.colorScheme == views::ColorScheme::dark) out_ << " dark";
        out_ << ' ' << list.url.value_or("no link") << '\n';
        for (const views::Element& element : list.elements) {
            std::visit([&](const auto& content) { print(content, element.frame); },
                       element.content);
            out_ << (element.accent ? " accent\n" : "\n");
        }
    }
    std::string text() const { return out_.str(); }

private:
    void print(const views::TextElement& text, const views::Rect& at) {
        out_ << "text " << std::quoted(text.text);
        if (text.lines != std::vector{text.text})
            for (const std::string& line : text.lines) out_ << " > " << std::quoted(line);
        frame(at);
        font(text.font);
        if (text.font.design == views::FontDesign::rounded) out_ << " rounded";
        if (text.font.monospacedDigits) out_ << " digits";
        color(text.color);
        if (text.lineLimit) out_ << " limit " << *text.lineLimit;
        if (text.truncation == views::Truncation::middle) out_ << " middle";
        if (text.shrink != 1) out_ << " shrink " << text.shrink;
    }
    void print(const views::SymbolElement& symbol, const views::Rect& at) {
        out_ << "symbol " << symbol.name;
        frame(at);
        font(symbol.font);
        color(symbol.color);
    }
    template <class Shape>
    void print(const Shape& shape, const views::Rect& at) {
        out_ << (std::is_same_v<Shape, views::CircleElement> ? "circle" : "rectangle");
        frame(at);
        color(shape.color);
    }
    void print(const views::PathElement& path, const views::Rect& at) {
        using Verb = views::PathCommand::Verb;
        out_ << "path";
        frame(at);
        for (const auto& [verb, to, control1, control2] : path.path.commands()) {
            out_ << ' ' << "MLCZ"[static_cast<int>(verb)];
            if (verb == Verb::curve) out_ << point(control1) << point(control2);
            if (verb != Verb::close) out_ << point(to);
        }
        std::visit([&](const auto& paint) { print(paint); }, path.paint);
    }
    void print(const views::Fill& fill) {
        out_ << " fill";
        for (const views::Color& stop : fill.gradient) color(stop);
    }
    void print(const views::Stroke& stroke) {
        out_ << " stroke";
        color(stroke.color);
        out_ << ' ' << stroke.width << ' ' << foundation::name(stroke.cap) << ' '
             << foundation::name(stroke.join);
        for (const double length : stroke.dash) out_ << " dash " << length;
    }

    void frame(const views::Rect& at) {
        out_ << point(at.origin) << ' ' << at.size.width << 'x' << at.size.height;
    }
    void font(const views::Font& font) {
        out_ << ' ' << font.size << ' ' << foundation::name(font.weight);
    }
    void color(const views::Color& color) {
        out_ << ' ' << color.hex();
        if (color.opacity != 1) out_ << '/' << color.opacity;
    }
    static std::string point(const views::Point& point) {
        std::ostringstream text;
        text << ' ' << point.x << ',' << point.y;
        return text.str();
    }

    std::ostringstream out_{};
};

}  // namespace tessary
