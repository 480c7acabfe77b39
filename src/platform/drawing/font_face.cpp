#include "platform/drawing/font_face.h"

#include <cairo-ft.h>
#include <fontconfig/fontconfig.h>
#include <hb.h>

#include "platform/drawing/release.h"

namespace tessary::drawing {

namespace {

using ShapingFontPtr = Owned<hb_font_t, hb_font_destroy>;
using BufferPtr = Owned<hb_buffer_t, hb_buffer_destroy>;
using DrawFunctionsPtr = Owned<hb_draw_funcs_t, hb_draw_funcs_destroy>;
using PatternPtr = Owned<FcPattern, FcPatternDestroy>;
using CairoFacePtr = Owned<cairo_font_face_t, cairo_font_face_destroy>;

/// Reads outlines, which run upward in the font's units, into a path that runs downward.
struct OutlineReader {
    views::Point origin{};
    double scale{};
    views::Path& path;

    views::Point at(float x, float y) const {
        return {origin.x + double{x} * scale, origin.y - double{y} * scale};
    }
    static OutlineReader& self(void* reader) { return *static_cast<OutlineReader*>(reader); }

    static void move(hb_draw_funcs_t*, void* data, hb_draw_state_t*, float x, float y, void*) {
        self(data).path.move(self(data).at(x, y));
    }
    static void line(hb_draw_funcs_t*, void* data, hb_draw_state_t*, float x, float y, void*) {
        self(data).path.line(self(data).at(x, y));
    }
    static void curve(hb_draw_funcs_t*, void* data, hb_draw_state_t*, float x1, float y1, float x2,
                      float y2, float x, float y, void*) {
        const OutlineReader& reader = self(data);
        reader.path.curve(reader.at(x1, y1), reader.at(x2, y2), reader.at(x, y));
    }
    static void close(hb_draw_funcs_t*, void* data, hb_draw_state_t*, void*) {
        self(data).path.close();
    }
};

hb_draw_funcs_t* outlineFunctions() {
    static const DrawFunctionsPtr functions = [] {
        DrawFunctionsPtr made{hb_draw_funcs_create()};
        hb_draw_funcs_set_move_to_func(made.get(), OutlineReader::move, nullptr, nullptr);
        hb_draw_funcs_set_line_to_func(made.get(), OutlineReader::line, nullptr, nullptr);
        hb_draw_funcs_set_cubic_to_func(made.get(), OutlineReader::curve, nullptr, nullptr);
        hb_draw_funcs_set_close_path_func(made.get(), OutlineReader::close, nullptr, nullptr);
        hb_draw_funcs_make_immutable(made.get());
        return made;
    }();
    return functions.get();
}

/// Characters that steer direction or presentation: what they mean, Pango has to say.
bool steers(hb_codepoint_t c) {
    const bool direction = c == 0x061C || c == 0x200E || c == 0x200F ||
                           (c >= 0x202A && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069);
    const bool presentation = c == 0x200D || (c >= 0xFE00 && c <= 0xFE0F) || c == 0x20E3;
    return direction || presentation;
}

/// The text as a buffer of characters, one language and direction throughout.
BufferPtr buffered(std::string_view text) {
    BufferPtr buffer{hb_buffer_create()};
    const auto length = static_cast<int>(text.size());
    hb_buffer_add_utf8(buffer.get(), text.data(), length, 0, length);
    hb_buffer_guess_segment_properties(buffer.get());
    hb_buffer_set_language(buffer.get(), hb_language_from_string("en", -1));
    return buffer;
}

}  // namespace

struct FontFace::Parts {
    ShapingFontPtr font{};
    PatternPtr pattern{};
    mutable CairoFacePtr cairo{};  ///< made when it is asked for
};

FontFace::FontFace(std::unique_ptr<Parts> parts) : parts_(std::move(parts)) {}
FontFace::FontFace(hb_font_t* font, _FcPattern* pattern) : parts_(std::make_unique<Parts>()) {
    parts_->font.reset(hb_font_reference(font));
    FcPatternReference(pattern);
    parts_->pattern.reset(pattern);
}
FontFace::~FontFace() = default;

std::unique_ptr<FontFace> FontFace::open(const std::string& file) {
    hb_blob_t* blob = hb_blob_create_from_file_or_fail(file.c_str());
    if (blob == nullptr) return nullptr;
    hb_face_t* face = hb_face_create(blob, 0);
    hb_blob_destroy(blob);
    auto parts = std::make_unique<Parts>();
    parts->font.reset(hb_font_create(face));
    hb_face_destroy(face);
    parts->pattern.reset(FcPatternCreate());
    FcPatternAddString(parts->pattern.get(), FC_FILE,
                       reinterpret_cast<const FcChar8*>(file.c_str()));
    FcPatternAddInteger(parts->pattern.get(), FC_INDEX, 0);
    FcPatternAddBool(parts->pattern.get(), FC_HINTING, FcFalse);
    return std::unique_ptr<FontFace>{new FontFace{std::move(parts)}};
}

bool FontFace::covers(std::string_view text) const {
    const BufferPtr buffer = buffered(text);
    if (HB_DIRECTION_IS_BACKWARD(hb_buffer_get_direction(buffer.get()))) return false;
    unsigned count = 0;
    const hb_glyph_info_t* characters = hb_buffer_get_glyph_infos(buffer.get(), &count);
    for (unsigned i = 0; i < count; ++i) {
        hb_codepoint_t glyph = 0;
        const hb_codepoint_t c = characters[i].codepoint;
        if (steers(c) || hb_font_get_nominal_glyph(parts_->font.get(), c, &glyph) == 0)
            return false;
    }
    return true;
}

std::vector<SetGlyph> FontFace::set(std::string_view text, bool monospacedDigits) const {
    const BufferPtr buffer = buffered(text);
    const hb_feature_t tabular{HB_TAG('t', 'n', 'u', 'm'), 1, HB_FEATURE_GLOBAL_START,
                               HB_FEATURE_GLOBAL_END};
    hb_shape(parts_->font.get(), buffer.get(), &tabular, monospacedDigits ? 1 : 0);
    unsigned count = 0;
    const hb_glyph_info_t* infos = hb_buffer_get_glyph_infos(buffer.get(), &count);
    const hb_glyph_position_t* positions = hb_buffer_get_glyph_positions(buffer.get(), &count);
    std::vector<SetGlyph> glyphs;
    glyphs.reserve(count);
    for (unsigned i = 0; i < count; ++i)
        glyphs.push_back({infos[i].codepoint, infos[i].cluster,
                          static_cast<double>(positions[i].x_advance),
                          static_cast<double>(positions[i].x_offset),
                          static_cast<double>(positions[i].y_offset)});
    return glyphs;
}

double FontFace::unitsPerEm() const {
    return hb_face_get_upem(hb_font_get_face(parts_->font.get()));
}

void FontFace::addOutline(std::uint32_t glyph, views::Point origin, double scale,
                          views::Path& path) const {
    OutlineReader reader{origin, scale, path};
#if HB_VERSION_ATLEAST(7, 0, 0)
    hb_font_draw_glyph(parts_->font.get(), glyph, outlineFunctions(), &reader);
#else
    hb_font_get_glyph_shape(parts_->font.get(), glyph, outlineFunctions(), &reader);
#endif
}

_cairo_font_face* FontFace::cairoFace() const {
    if (!parts_->cairo)
        parts_->cairo.reset(cairo_ft_font_face_create_for_pattern(parts_->pattern.get()));
    return parts_->cairo.get();
}

}  // namespace tessary::drawing
