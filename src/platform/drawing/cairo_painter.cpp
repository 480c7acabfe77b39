#include "platform/drawing/cairo_painter.h"

#include <algorithm>
#include <array>
#include <cairo-pdf.h>
#include <cairo.h>
#include <ctime>

#include "platform/drawing/card.h"
#include "platform/drawing/release.h"
#include "platform/drawing/symbols.h"

namespace tessary::drawing {

using views::Color;
using views::DisplayList;
using views::Element;
using views::Path;
using views::PathCommand;
using views::Rect;

namespace {

using SurfacePtr = Owned<cairo_surface_t, cairo_surface_destroy>;
using CairoContextPtr = Owned<cairo_t, cairo_destroy>;
using GradientPtr = Owned<cairo_pattern_t, cairo_pattern_destroy>;

/// Restores the state of a context when it goes.
class Saved {
public:
    explicit Saved(cairo_t* cr) : cr_(cr) { cairo_save(cr_); }
    ~Saved() { cairo_restore(cr_); }
    Saved(const Saved&) = delete;
    Saved& operator=(const Saved&) = delete;

private:
    cairo_t* cr_;
};

enum class Medium { pixels, document };

void trace(cairo_t* cr, const Path& path) {
    path.each([&](const PathCommand& c) {
        switch (c.verb) {
            case PathCommand::Verb::move: cairo_move_to(cr, c.to.x, c.to.y); break;
            case PathCommand::Verb::line: cairo_line_to(cr, c.to.x, c.to.y); break;
            case PathCommand::Verb::curve:
                cairo_curve_to(cr, c.control1.x, c.control1.y, c.control2.x, c.control2.y, c.to.x,
                               c.to.y);
                break;
            case PathCommand::Verb::close: cairo_close_path(cr); break;
        }
    });
}

void use(cairo_t* cr, const Color& color) {
    cairo_set_source_rgba(cr, color.red, color.green, color.blue, color.opacity);
}

void strokeRound(cairo_t* cr, double width) {
    cairo_set_line_width(cr, width);
    cairo_set_line_cap(cr, CAIRO_LINE_CAP_ROUND);
    cairo_set_line_join(cr, CAIRO_LINE_JOIN_ROUND);
    cairo_stroke(cr);
}

void showGlyphs(cairo_t* cr, const GlyphRun& run) {
    cairo_set_font_face(cr, run.face->cairoFace());
    cairo_set_font_size(cr, run.size);
    std::vector<cairo_glyph_t> glyphs;
    glyphs.reserve(run.glyphs.size());
    for (const Glyph& glyph : run.glyphs)
        glyphs.push_back({glyph.index, glyph.origin.x, glyph.origin.y});
    cairo_show_glyphs(cr, glyphs.data(), static_cast<int>(glyphs.size()));
}

/// A picture of `width` by `height` pixels and a context that draws into it.
struct Canvas {
    Canvas(int width, int height, double scale)
        : pixels{width, height, scale,
                 std::vector<std::uint32_t>(static_cast<std::size_t>(width) *
                                            static_cast<std::size_t>(height))},
          surface{cairo_image_surface_create_for_data(
              reinterpret_cast<unsigned char*>(pixels.values.data()), CAIRO_FORMAT_ARGB32, width,
              height, width * 4)},
          cr{cairo_create(surface.get())} {
        cairo_scale(cr.get(), scale, scale);
    }
    Pixels finished() {
        cairo_surface_flush(surface.get());
        return std::move(pixels);
    }
    Pixels pixels;
    SurfacePtr surface;
    CairoContextPtr cr;
};

class ListPainter {
public:
    ListPainter(cairo_t* cr, const DisplayList& list, PangoTypesetter& typesetter, Medium medium)
        : cr_(cr), list_(list), typesetter_(typesetter), medium_(medium) {}

    void paint() {
        if (list_.background) {
            trace(cr_, cardOutline(list_));
            use(cr_, *list_.background);
            cairo_fill(cr_);
        }
        for (const Element& element : list_.elements)
            std::visit([&](const auto& content) { draw(element, content); }, element.content);
    }

private:
    void draw(const Element& element, const views::TextElement& text) {
        use(cr_, text.color);
        for (std::size_t i = 0; i < text.lines.size(); ++i) {
            const GlyphLine& line = typesetter_.line(text.lines[i], text.font);
            const Saved saved{cr_};
            cairo_translate(cr_, element.frame.minX(), baseline(list_, element, text, i));
            cairo_scale(cr_, text.shrink, text.shrink);
            for (const GlyphRun& run : line.runs) draw(run, text.color);
        }
    }

    /// Outlines keep their exact places; Cairo would move a pixel glyph to the nearest whole pixel.
    /// A document keeps glyphs, so that its text can be searched.
    void draw(const GlyphRun& run, const Color& color) {
        const bool asGlyphs = run.colored || (medium_ == Medium::document && run.stroke == 0);
        if (asGlyphs) return showGlyphs(cr_, run);
        const Path outline = run.outline();
        if (run.stroke == 0) {
            trace(cr_, outline);
            cairo_fill(cr_);
            return;
        }
        const bool grouped = color.opacity < 1;  // fill and stroke overlap
        if (grouped) {
            cairo_push_group(cr_);
            use(cr_, {color.red, color.green, color.blue, 1});
        }
        trace(cr_, outline);
        cairo_fill_preserve(cr_);
        strokeRound(cr_, run.stroke);
        if (!grouped) return;
        cairo_pop_group_to_source(cr_);
        cairo_paint_with_alpha(cr_, color.opacity);
        use(cr_, color);
    }

    void draw(const Element& element, const views::SymbolElement& element_) {
        const Symbol drawing = symbol(element_.name, element_.font.weight);
        const Saved saved{cr_};
        cairo_translate(cr_, element.frame.minX(), element.frame.minY());
        cairo_scale(cr_, element_.font.size, element_.font.size);
        use(cr_, element_.color);
        for (const SymbolPart& part : drawing.parts) draw(part);
    }

    void draw(const SymbolPart& part) {
        const Saved saved{cr_};
        cairo_set_fill_rule(cr_, CAIRO_FILL_RULE_EVEN_ODD);
        if (!part.cutout.empty()) {
            cairo_rectangle(cr_, -1, -1, 4, 4);
            trace(cr_, part.cutout);
            cairo_clip(cr_);
        }
        trace(cr_, part.path);
        if (part.stroke > 0)
            strokeRound(cr_, part.stroke);
        else
            cairo_fill(cr_);
    }

    void draw(const Element& element, const views::RectangleElement& rectangle) {
        const Rect& frame = element.frame;
        cairo_rectangle(cr_, frame.minX(), frame.minY(), frame.size.width, frame.size.height);
        use(cr_, rectangle.color);
        cairo_fill(cr_);
    }

    void draw(const Element& element, const views::CircleElement& circle) {
        const Rect& frame = element.frame;
        const double diameter = std::min(frame.size.width, frame.size.height);
        trace(cr_, Path{}.circle({frame.midX(), frame.midY()}, diameter / 2));
        use(cr_, circle.color);
        cairo_fill(cr_);
    }

    void draw(const Element& element, const views::PathElement& path) {
        const Saved saved{cr_};
        cairo_translate(cr_, element.frame.minX(), element.frame.minY());
        trace(cr_, path.path);
        std::visit([&](const auto& paint) { apply(paint, element.frame.size.height); }, path.paint);
    }

    void apply(const views::Stroke& stroke, double) {
        use(cr_, stroke.color);
        cairo_set_line_width(cr_, stroke.width);
        cairo_set_line_cap(
            cr_, stroke.cap == views::LineCap::round ? CAIRO_LINE_CAP_ROUND : CAIRO_LINE_CAP_BUTT);
        cairo_set_line_join(cr_, stroke.join == views::LineJoin::round ? CAIRO_LINE_JOIN_ROUND
                                                                       : CAIRO_LINE_JOIN_MITER);
        cairo_set_miter_limit(cr_, stroke.miterLimit);
        cairo_set_dash(cr_, stroke.dash.data(), static_cast<int>(stroke.dash.size()),
                       stroke.dashPhase);
        cairo_stroke(cr_);
    }

    void apply(const views::Fill& fill, double height) {
        const GradientPtr gradient{cairo_pattern_create_linear(0, 0, 0, height)};
        const auto steps = static_cast<double>(std::max<std::size_t>(fill.gradient.size(), 2) - 1);
        for (std::size_t i = 0; i < fill.gradient.size(); ++i) {
            const Color& stop = fill.gradient[i];
            cairo_pattern_add_color_stop_rgba(gradient.get(), static_cast<double>(i) / steps,
                                              stop.red, stop.green, stop.blue, stop.opacity);
        }
        cairo_set_source(cr_, gradient.get());
        cairo_fill(cr_);
    }

    cairo_t* cr_;
    const DisplayList& list_;
    PangoTypesetter& typesetter_;
    Medium medium_;
};

cairo_status_t append(void* document, const unsigned char* bytes, unsigned length) {
    static_cast<std::string*>(document)->append(reinterpret_cast<const char*>(bytes), length);
    return CAIRO_STATUS_SUCCESS;
}

/// "2024-11-16T16:00:40Z", the latest second that the date's year can be written with.
std::string timestamp(foundation::Date date) {
    constexpr double lastOfYear9999 = 253402300799;
    const auto seconds = static_cast<std::time_t>(std::clamp(date.seconds, 0.0, lastOfYear9999));
    std::tm fields{};
    gmtime_r(&seconds, &fields);
    std::array<char, 32> text{};
    return {text.data(), std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%SZ", &fields)};
}

}  // namespace

Pixels paintPixels(const DisplayList& list, PangoTypesetter& typesetter) {
    const PixelSize size = pixelSize(list);
    Canvas canvas{size.width, size.height, list.scale};
    ListPainter{canvas.cr.get(), list, typesetter, Medium::pixels}.paint();
    return canvas.finished();
}

GlyphPicture paintGlyphs(const GlyphRun& run) {
    constexpr double scale = 4;  // sharp at the largest scale that a card is drawn at
    const double room = 1.25 * run.size;
    double right = 0;
    for (const Glyph& glyph : run.glyphs) right = std::max(right, glyph.origin.x);
    const double left = run.glyphs.empty() ? 0 : run.glyphs.front().origin.x;
    const Rect frame{{left, -room}, {right - left + 1.5 * run.size, 1.5 * room}};
    Canvas canvas{static_cast<int>(frame.size.width * scale) + 1,
                  static_cast<int>(frame.size.height * scale) + 1, scale};
    cairo_translate(canvas.cr.get(), -frame.minX(), -frame.minY());
    showGlyphs(canvas.cr.get(), run);
    const PixelSize size{canvas.pixels.width, canvas.pixels.height};
    return {canvas.finished(), {frame.origin, {size.width / scale, size.height / scale}}};
}

std::string paintPDF(const DisplayList& list, PangoTypesetter& typesetter, foundation::Date date) {
    std::string document;
    const SurfacePtr surface{
        cairo_pdf_surface_create_for_stream(append, &document, list.size.width, list.size.height)};
    // From 1.5 on a document's objects may be packed, its date among them; nothing here needs it.
    cairo_pdf_surface_restrict_to_version(surface.get(), CAIRO_PDF_VERSION_1_4);
    cairo_pdf_surface_set_metadata(surface.get(), CAIRO_PDF_METADATA_CREATE_DATE,
                                   timestamp(date).c_str());
    const CairoContextPtr cr{cairo_create(surface.get())};
    ListPainter{cr.get(), list, typesetter, Medium::document}.paint();
    cairo_show_page(cr.get());
    cairo_surface_finish(surface.get());
    return document;
}

}  // namespace tessary::drawing
