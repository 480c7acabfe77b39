#include "platform/drawing/svg_painter.h"

#include <cmath>

#include "platform/drawing/cairo_painter.h"
#include "platform/drawing/card.h"
#include "platform/drawing/png_encoder.h"
#include "platform/drawing/symbols.h"
#include "platform/drawing/text_painter.h"
#include "platform/foundation/base64.h"
#include "platform/foundation/joined.h"
#include "platform/foundation/numbers.h"

namespace tessary::drawing {

using views::Color;
using views::DisplayList;
using views::Element;
using views::Path;
using views::PathCommand;
using views::Point;
using views::Rect;

namespace {

/// A number to a thousandth, without zeros that say nothing.
std::string number(double value) {
    const double rounded = std::round(value * 1000) / 1000;
    return foundation::digits(rounded == 0 ? 0.0 : rounded);
}

std::string pair(Point p) { return number(p.x) + " " + number(p.y); }

std::string pathData(const Path& path) {
    std::string data;
    path.each([&](const PathCommand& c) {
        switch (c.verb) {
            case PathCommand::Verb::move: data += "M" + pair(c.to); break;
            case PathCommand::Verb::line: data += "L" + pair(c.to); break;
            case PathCommand::Verb::curve:
                data += "C" + pair(c.control1) + " " + pair(c.control2) + " " + pair(c.to);
                break;
            case PathCommand::Verb::close: data += "Z"; break;
        }
    });
    return data;
}

/// Text between tags: markup escaped, control characters and U+FFFE and U+FFFF, which XML has no
/// place for, left out.
std::string escaped(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        const std::string_view three = text.substr(i, 3);
        if (three == "\uFFFE" || three == "\uFFFF") {
            i += 2;
            continue;
        }
        switch (c) {
            case '&': result += "&amp;"; break;
            case '<': result += "&lt;"; break;
            case '>': result += "&gt;"; break;
            case '"': result += "&quot;"; break;
            default:
                if (static_cast<unsigned char>(c) >= 0x20 || c == '\n') result += c;
        }
    }
    return result;
}

class SVGPainter {
public:
    SVGPainter(const DisplayList& list, PangoTypesetter& typesetter, std::string_view prefix)
        : list_(list), typesetter_(typesetter), prefix_(prefix) {}

    std::string document() {
        const std::string width = number(list_.size.width);
        const std::string height = number(list_.size.height);
        svg_ = "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + width + "\" height=\"" +
               height + "\" viewBox=\"0 0 " + width + " " + height + "\" role=\"img\">\n<title>" +
               escaped(paintText(list_)) + "</title>\n";
        if (list_.background)
            tag("path", "d=\"" + pathData(cardOutline(list_)) + "\"" + fill(*list_.background));
        for (const Element& element : list_.elements)
            std::visit([&](const auto& content) { draw(element, content); }, element.content);
        return std::move(svg_) + "</svg>\n";
    }

private:
    void tag(std::string_view name, const std::string& attributes) {
        svg_.append("<").append(name).append(" ").append(attributes).append("/>\n");
    }
    static std::string frame(const Rect& rect) {
        return "x=\"" + number(rect.minX()) + "\" y=\"" + number(rect.minY()) + "\" width=\"" +
               number(rect.size.width) + "\" height=\"" + number(rect.size.height) + "\"";
    }
    static std::string opacity(std::string_view of, const Color& color) {
        return color.opacity == 1 ? std::string{}
                                  : " " + std::string{of} + "=\"" + number(color.opacity) + "\"";
    }
    static std::string fill(const Color& color) {
        return " fill=\"" + color.hex() + "\"" + opacity("fill-opacity", color);
    }
    static std::string stroke(const Color& color, double width) {
        return " fill=\"none\" stroke=\"" + color.hex() + "\"" + opacity("stroke-opacity", color) +
               " stroke-width=\"" + number(width) + "\"";
    }
    std::string identifier() { return prefix_ + std::to_string(++identifiers_); }
    static std::string placed(Point at, double scale) {
        const std::string move = " transform=\"translate(" + pair(at) + ")";
        return scale == 1 ? move + "\"" : move + " scale(" + number(scale) + ")\"";
    }

    void draw(const Element& element, const views::TextElement& text) {
        for (std::size_t i = 0; i < text.lines.size(); ++i) {
            const Point at{element.frame.minX(), baseline(list_, element, text, i)};
            for (const GlyphRun& run : typesetter_.line(text.lines[i], text.font).runs) {
                if (run.colored)
                    drawPicture(run, at, text.shrink);
                else
                    drawOutline(run, text.color, placed(at, text.shrink));
            }
        }
    }

    /// Fill and added stroke overlap, so a faded text fades as a whole.
    void drawOutline(const GlyphRun& run, const Color& color, const std::string& transform) {
        const std::string data = pathData(run.outline());
        if (data.empty()) return;
        std::string style = " fill=\"" + color.hex() + "\"" + opacity("opacity", color);
        if (run.stroke > 0)
            style += " stroke=\"" + color.hex() + "\" stroke-width=\"" + number(run.stroke) +
                     "\" stroke-linejoin=\"round\" stroke-linecap=\"round\"";
        tag("path", "d=\"" + data + "\"" + style + transform);
    }

    void drawPicture(const GlyphRun& run, Point at, double shrink) {
        const GlyphPicture picture = paintGlyphs(run);
        tag("image", frame(picture.frame) + placed(at, shrink) + " href=\"data:image/png;base64," +
                         foundation::base64(encodePNG(picture.pixels)) + "\"");
    }

    void draw(const Element& element, const views::SymbolElement& drawn) {
        const Symbol drawing = symbol(drawn.name, drawn.font.weight);
        const double size = drawn.font.size;
        for (const SymbolPart& part : drawing.parts) {
            const Path path = part.path.transformed(size, size, element.frame.origin);
            std::string style = part.stroke > 0
                                    ? stroke(drawn.color, part.stroke * size) +
                                          " stroke-linejoin=\"round\" stroke-linecap=\"round\""
                                    : fill(drawn.color) + " fill-rule=\"evenodd\"";
            if (!part.cutout.empty()) style += clipped(part.cutout, size, element.frame);
            tag("path", "d=\"" + pathData(path) + "\"" + style);
        }
    }

    /// A clip to everything around a symbol but its cutout.
    std::string clipped(const Path& cutout, double size, const Rect& frame) {
        const std::string id = identifier();
        Path around;
        around.rectangle(frame.inset(-size));
        around.append(cutout.transformed(size, size, frame.origin));
        svg_ += "<clipPath id=\"" + id + "\"><path clip-rule=\"evenodd\" d=\"" + pathData(around) +
                "\"/></clipPath>\n";
        return " clip-path=\"url(#" + id + ")\"";
    }

    void draw(const Element& element, const views::RectangleElement& rectangle) {
        tag("rect", frame(element.frame) + fill(rectangle.color));
    }

    void draw(const Element& element, const views::CircleElement& circle) {
        const Rect& frame = element.frame;
        tag("circle", "cx=\"" + number(frame.midX()) + "\" cy=\"" + number(frame.midY()) +
                          "\" r=\"" + number(std::min(frame.size.width, frame.size.height) / 2) +
                          "\"" + fill(circle.color));
    }

    void draw(const Element& element, const views::PathElement& path) {
        const std::string style = std::visit(
            [&](const auto& paint) { return painted(paint, element.frame); }, path.paint);
        tag("path",
            "d=\"" + pathData(path.path.transformed(1, 1, element.frame.origin)) + "\"" + style);
    }

    static std::string painted(const views::Stroke& line, const Rect&) {
        std::string style = stroke(line.color, line.width) + " stroke-miterlimit=\"" +
                            number(line.miterLimit) + "\"";
        if (line.cap == views::LineCap::round) style += " stroke-linecap=\"round\"";
        if (line.join == views::LineJoin::round) style += " stroke-linejoin=\"round\"";
        const auto dashes = foundation::joined(line.dash, " ", number);
        if (!dashes.empty())
            style += " stroke-dasharray=\"" + dashes + "\" stroke-dashoffset=\"" +
                     number(line.dashPhase) + "\"";
        return style;
    }

    std::string painted(const views::Fill& filled, const Rect& frame) {
        if (filled.gradient.size() == 1) return fill(filled.gradient.front());
        const std::string id = identifier();
        svg_ += "<linearGradient id=\"" + id +
                "\" gradientUnits=\"userSpaceOnUse\" x1=\"0\" x2=\"0\" y1=\"" +
                number(frame.minY()) + "\" y2=\"" + number(frame.maxY()) + "\">";
        for (std::size_t i = 0; i < filled.gradient.size(); ++i) {
            const Color& stop = filled.gradient[i];
            const double at =
                static_cast<double>(i) / static_cast<double>(filled.gradient.size() - 1);
            svg_ += "<stop offset=\"" + number(at) + "\" stop-color=\"" + stop.hex() + "\"" +
                    opacity("stop-opacity", stop) + "/>";
        }
        svg_ += "</linearGradient>\n";
        return " fill=\"url(#" + id + ")\"";
    }

    const DisplayList& list_;
    PangoTypesetter& typesetter_;
    std::string prefix_;
    int identifiers_{};
    std::string svg_{};
};

}  // namespace

std::string paintSVG(const DisplayList& list, PangoTypesetter& typesetter,
                     std::string_view prefix) {
    return SVGPainter{list, typesetter, prefix}.document();
}

}  // namespace tessary::drawing
