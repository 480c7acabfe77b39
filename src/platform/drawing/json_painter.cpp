#include "platform/drawing/json_painter.h"

#include "platform/foundation/json_writing.h"

namespace tessary::drawing {

using foundation::JSONWriter;
using foundation::name;
using views::Color;

namespace {

/// What the kinds of elements are called, in the order of ElementContent.
constexpr const char* types[] = {"text", "symbol", "rectangle", "circle", "path"};

class JSONPainter {
public:
    std::string document(const views::DisplayList& list, const Caption& caption) {
        json_.object([&] {
            json_.member("kind", caption.kind);
            json_.member("family", name(caption.family));
            json_.member("date", caption.date);
            json_.key("size").object([&] { write(list.size); });
            json_.member("scale", list.scale);
            json_.key("margins").object([&] { write(list.margins); });
            json_.member("background",
                         list.background ? std::optional{list.background->hex()} : std::nullopt);
            json_.member("cornerRadius", list.cornerRadius);
            json_.member("colorScheme", name(list.colorScheme));
            json_.member("url", list.url);
            json_.key("elements").array([&] {
                for (const views::Element& element : list.elements)
                    json_.object([&] { write(element); });
            });
        });
        return json_.text() + "\n";
    }

private:
    void write(const views::Size& size) {
        json_.member("width", size.width).member("height", size.height);
    }
    void write(const views::EdgeInsets& insets) {
        json_.member("top", insets.top).member("leading", insets.leading);
        json_.member("bottom", insets.bottom).member("trailing", insets.trailing);
    }
    void write(const Color& color) {
        json_.member("color", color.hex()).member("opacity", color.opacity);
    }

    void write(const views::Element& element) {
        json_.member("type", types[element.content.index()]);
        json_.key("frame").object([&] {
            json_.member("x", element.frame.minX()).member("y", element.frame.minY());
            write(element.frame.size);
        });
        json_.member("accent", element.accent);
        std::visit([&](const auto& content) { write(content); }, element.content);
    }

    void write(const views::TextElement& text) {
        json_.member("text", text.text).member("lines", text.lines);
        json_.key("font").object([&] {
            json_.member("size", text.font.size).member("weight", name(text.font.weight));
            json_.member("design", name(text.font.design));
            json_.member("monospacedDigits", text.font.monospacedDigits);
        });
        write(text.color);
        json_.member("lineLimit",
                     text.lineLimit ? std::optional<std::int64_t>{*text.lineLimit} : std::nullopt);
        json_.member("truncation", name(text.truncation)).member("shrink", text.shrink);
    }
    void write(const views::SymbolElement& symbol) {
        json_.member("name", symbol.name);
        json_.key("font").object([&] {
            json_.member("size", symbol.font.size).member("weight", name(symbol.font.weight));
        });
        write(symbol.color);
    }
    void write(const views::RectangleElement& rectangle) { write(rectangle.color); }
    void write(const views::CircleElement& circle) { write(circle.color); }

    void write(const views::PathElement& path) {
        json_.key("commands").array([&] {
            path.path.each(
                [&](const views::PathCommand& command) { json_.array([&] { write(command); }); });
        });
        std::visit([&](const auto& paint) { write(paint); }, path.paint);
    }
    void write(const views::PathCommand& command) {
        using Verb = views::PathCommand::Verb;
        switch (command.verb) {
            case Verb::move: json_.value("M"); break;
            case Verb::line: json_.value("L"); break;
            case Verb::curve:
                json_.value("C");
                write(command.control1);
                write(command.control2);
                break;
            case Verb::close: json_.value("Z"); return;
        }
        write(command.to);
    }
    void write(const views::Point& point) { json_.value(point.x).value(point.y); }

    void write(const views::Stroke& stroke) {
        json_.key("stroke").object([&] {
            write(stroke.color);
            json_.member("width", stroke.width).member("cap", name(stroke.cap));
            json_.member("join", name(stroke.join)).member("miterLimit", stroke.miterLimit);
            json_.member("dash", stroke.dash).member("dashPhase", stroke.dashPhase);
        });
    }
    void write(const views::Fill& fill) {
        json_.key("fill").object([&] {
            json_.key("gradient").array([&] {
                for (const Color& stop : fill.gradient) json_.object([&] { write(stop); });
            });
            json_.member("from", "top").member("to", "bottom");
        });
    }

    JSONWriter json_{JSONWriter::Style::indented};
};

}  // namespace

std::string paintJSON(const views::DisplayList& list, const Caption& caption) {
    return JSONPainter{}.document(list, caption);
}

}  // namespace tessary::drawing
