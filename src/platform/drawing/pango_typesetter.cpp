#include "platform/drawing/pango_typesetter.h"

#include <algorithm>
#include <cairo-ft.h>
#include <fontconfig/fontconfig.h>
#include <hb.h>
#include <map>
#include <pango/pango.h>
#include <pango/pangofc-font.h>
#include <pango/pangofc-fontmap.h>
#include <pango/pangoft2.h>
#include <tuple>
#include <utility>

#include "platform/drawing/symbols.h"

namespace tessary::drawing {

using views::Font;
using views::FontDesign;
using views::Weight;

namespace {

/// Measured on the stand-in: the height of its capitals, in ems.
constexpr double standInCapHeight = 0.727273;

/// The rounded design: round strokes added to the light weight, and the room they take, in ems.
struct Rounding {
    double stroke{};
    double tracking{};
};
constexpr Rounding rounding(Weight weight) {
    switch (weight) {
        case Weight::regular: return {0.018, 0.008};
        case Weight::medium: return {0.042, 0.020};
        case Weight::semibold: return {0.064, 0.030};
    }
    return {};
}

/// How a font of the system is made of the stand-in.
struct Cut {
    PangoWeight weight{PANGO_WEIGHT_NORMAL};
    double size{};      ///< of the stand-in, in points
    double stroke{};    ///< points
    double tracking{};  ///< points added to each glyph's advance
};

PangoWeight pangoWeight(Weight weight) {
    switch (weight) {
        case Weight::regular: return PANGO_WEIGHT_NORMAL;
        case Weight::medium: return PANGO_WEIGHT_MEDIUM;
        case Weight::semibold: return PANGO_WEIGHT_SEMIBOLD;
    }
    return PANGO_WEIGHT_NORMAL;
}

Cut plainCut(const Font& font) {
    return {pangoWeight(font.weight), font.capHeight() / standInCapHeight, 0, 0};
}

/// The strokes make the capitals taller, so the outlines are set smaller by as much.
Cut roundedCut(const Font& font) {
    const Rounding round = rounding(font.weight);
    const double size = font.capHeight() / (standInCapHeight + round.stroke);
    return {PANGO_WEIGHT_LIGHT, size, round.stroke * size, round.tracking * size};
}

template <auto release>
struct Release {
    template <class Object>
    void operator()(Object* object) const {
        release(object);
    }
};
using MapPtr = std::unique_ptr<PangoFontMap, Release<g_object_unref>>;
using ContextPtr = std::unique_ptr<PangoContext, Release<g_object_unref>>;
using AttributesPtr = std::unique_ptr<PangoAttrList, Release<pango_attr_list_unref>>;
using DescriptionPtr = std::unique_ptr<PangoFontDescription, Release<pango_font_description_free>>;
using GlyphsPtr = std::unique_ptr<PangoGlyphString, Release<pango_glyph_string_free>>;
using FacePtr = std::unique_ptr<cairo_font_face_t, Release<cairo_font_face_destroy>>;
using FontPtr = std::unique_ptr<PangoFont, Release<g_object_unref>>;
using DrawFunctionsPtr = std::unique_ptr<hb_draw_funcs_t, Release<hb_draw_funcs_destroy>>;
using ItemPtr = std::unique_ptr<PangoItem, Release<pango_item_free>>;

/// Knows the stand-in's folder and nothing else, so that a text looks the same whatever is
/// installed and no list of all fonts is read. Made current before Pango's first call, which would
/// otherwise load the machine's own configuration on a thread of its own.
FcConfig* standInFonts() {
    static FcConfig* const config = [] {
        constexpr const char* description =
            "<fontconfig><dir>" TESSARY_FONT_DIR
            "</dir>"
            // Cuts that no text asks for only take time to be passed over.
            "<selectfont><rejectfont><glob>*Italic*</glob><glob>*Display*</glob></rejectfont>"
            "</selectfont><cachedir>/var/cache/fontconfig</cachedir>"
            "<cachedir prefix=\"xdg\">fontconfig</cachedir></fontconfig>";
        FcConfig* made = FcConfigCreate();
        FcConfigParseAndLoadFromMemory(made, reinterpret_cast<const FcChar8*>(description), FcTrue);
        FcConfigBuildFonts(made);
        FcConfigSetCurrent(made);
        return made;
    }();
    return config;
}

FcConfig* machineFonts() {
    static FcConfig* const config = FcInitLoadConfigAndFonts();
    return config;
}

/// Glyph positions are exact: no hinting, no rounding, so widths scale with the size.
void withoutHinting(FcPattern* pattern, gpointer) {
    FcPatternDel(pattern, FC_HINTING);
    FcPatternAddBool(pattern, FC_HINTING, FcFalse);
}

MapPtr makeMap(FcConfig* config) {
    MapPtr map{pango_ft2_font_map_new()};
    pango_fc_font_map_set_config(PANGO_FC_FONT_MAP(map.get()), config);
    pango_fc_font_map_set_default_substitute(PANGO_FC_FONT_MAP(map.get()), withoutHinting, nullptr,
                                             nullptr);
    return map;
}

ContextPtr makeContext(PangoFontMap* map, const std::string& language) {
    ContextPtr context{pango_font_map_create_context(map)};
    pango_context_set_round_glyph_positions(context.get(), FALSE);
    pango_context_set_language(context.get(), pango_language_from_string(language.c_str()));
    return context;
}

double points(int pangoUnits) { return static_cast<double>(pangoUnits) / PANGO_SCALE; }

/// A stretch of a line in one face, direction and script, with its glyphs.
struct Segment {
    ItemPtr item{};
    GlyphsPtr glyphs{};

    bool complete() const {
        for (int i = 0; i < glyphs->num_glyphs; ++i) {
            const PangoGlyph glyph = glyphs->glyphs[i].glyph;
            if (glyph != PANGO_GLYPH_EMPTY && (glyph & PANGO_GLYPH_UNKNOWN_FLAG) != 0) return false;
        }
        return true;
    }
};

/// A line's segments in the order of the text, and how they were cut.
struct Shaped {
    std::vector<Segment> segments{};
    Cut cut{};

    bool complete() const {
        return std::all_of(segments.begin(), segments.end(),
                           [](const Segment& segment) { return segment.complete(); });
    }
};

bool isColored(PangoFont* font) {
    FcBool color = FcFalse;
    FcPattern* pattern = font != nullptr ? pango_fc_font_get_pattern(PANGO_FC_FONT(font)) : nullptr;
    return pattern != nullptr && FcPatternGetBool(pattern, FC_COLOR, 0, &color) == FcResultMatch &&
           color == FcTrue;
}

/// Reads glyphs' outlines, which run upward in Pango's units, into a path that runs downward.
class OutlineReader {
public:
    OutlineReader() : functions_(hb_draw_funcs_create()) {
        hb_draw_funcs_set_move_to_func(functions_.get(), move, nullptr, nullptr);
        hb_draw_funcs_set_line_to_func(functions_.get(), line, nullptr, nullptr);
        hb_draw_funcs_set_cubic_to_func(functions_.get(), curve, nullptr, nullptr);
        hb_draw_funcs_set_close_path_func(functions_.get(), close, nullptr, nullptr);
    }
    void append(hb_font_t* font, const Glyph& glyph) {
        origin_ = glyph.origin;
        hb_font_get_glyph_shape(font, glyph.index, functions_.get(), this);
    }
    const views::Path& path() const { return path_; }

private:
    views::Point at(float x, float y) const {
        return {origin_.x + double{x} / PANGO_SCALE, origin_.y - double{y} / PANGO_SCALE};
    }
    static OutlineReader& self(void* reader) { return *static_cast<OutlineReader*>(reader); }

    static void move(hb_draw_funcs_t*, void* data, hb_draw_state_t*, float x, float y, void*) {
        self(data).path_.move(self(data).at(x, y));
    }
    static void line(hb_draw_funcs_t*, void* data, hb_draw_state_t*, float x, float y, void*) {
        self(data).path_.line(self(data).at(x, y));
    }
    static void curve(hb_draw_funcs_t*, void* data, hb_draw_state_t*, float x1, float y1, float x2,
                      float y2, float x, float y, void*) {
        const OutlineReader& reader = self(data);
        self(data).path_.curve(reader.at(x1, y1), reader.at(x2, y2), reader.at(x, y));
    }
    static void close(hb_draw_funcs_t*, void* data, hb_draw_state_t*, void*) {
        self(data).path_.close();
    }

    DrawFunctionsPtr functions_;
    views::Point origin_{};
    views::Path path_{};
};

}  // namespace

class PangoTypesetter::Shaper {
public:
    explicit Shaper(std::string_view locale) : language_(locale) {
        std::replace(language_.begin(), language_.end(), '_', '-');
        own_ = makeMap(standInFonts());
        ownContext_ = makeContext(own_.get(), language_);
    }

    const GlyphLine& line(std::string_view text, const Font& font) {
        const Key key{std::string{text}, font.size, font.weight, font.design,
                      font.monospacedDigits};
        const auto found = lines_.find(key);
        if (found != lines_.end()) return found->second;
        return lines_.emplace(key, glyphLine(shaped(text, font))).first->second;
    }

    std::vector<views::Cluster> clusters(std::string_view text, const Font& font) {
        const std::vector<double> advances = characterAdvances(text, shaped(text, font));
        std::vector<PangoLogAttr> attributes(advances.size() + 1);
        pango_get_log_attrs(text.data(), static_cast<int>(text.size()), -1,
                            pango_context_get_language(ownContext_.get()), attributes.data(),
                            static_cast<int>(attributes.size()));
        std::vector<views::Cluster> result;
        std::size_t byte = 0;
        for (std::size_t i = 0; i < advances.size(); ++i) {
            const auto length =
                static_cast<std::size_t>(g_utf8_next_char(&text[byte]) - &text[byte]);
            if (result.empty() || attributes[i].is_cursor_position)
                result.push_back({byte, 0, 0, attributes[i].is_white != 0, false});
            result.back().length += length;
            result.back().advance += advances[i];
            result.back().breakAfter = attributes[i + 1].is_line_break != 0;
            byte += length;
        }
        return result;
    }

    cairo_font_face_t* cairoFace(PangoFont* font) {
        FacePtr& face = faces_.at(font).cairo;
        if (!face)
            face.reset(cairo_ft_font_face_create_for_pattern(
                pango_fc_font_get_pattern(PANGO_FC_FONT(font))));
        return face.get();
    }

private:
    using Key = std::tuple<std::string, double, Weight, FontDesign, bool>;

    PangoContext* machineContext() {
        if (!machineContext_) {
            machine_ = makeMap(machineFonts());
            machineContext_ = makeContext(machine_.get(), language_);
        }
        return machineContext_.get();
    }

    /// The stand-in alone where it has every character, else with the machine's fonts. Those have
    /// no round strokes to offer, so a text that needs them is set plainly throughout.
    Shaped shaped(std::string_view text, const Font& font) {
        const bool rounded = font.design == FontDesign::rounded;
        Shaped own =
            shaped(text, font, rounded ? roundedCut(font) : plainCut(font), ownContext_.get());
        if (own.complete()) return own;
        return shaped(text, font, plainCut(font), machineContext());
    }

    static Shaped shaped(std::string_view text, const Font& font, const Cut& cut,
                         PangoContext* context) {
        Shaped result{{}, cut};
        const auto length = static_cast<int>(text.size());
        const AttributesPtr attributes = attributesFor(font, cut);
        // The first strong character decides the direction; a text without any runs to the right.
        GList* items = pango_itemize_with_base_dir(context, PANGO_DIRECTION_WEAK_LTR, text.data(),
                                                   0, length, attributes.get(), nullptr);
        for (GList* link = items; link != nullptr; link = link->next) {
            Segment segment{ItemPtr{static_cast<PangoItem*>(link->data)},
                            GlyphsPtr{pango_glyph_string_new()}};
            pango_shape_full(text.data() + segment.item->offset, segment.item->length, text.data(),
                             length, &segment.item->analysis, segment.glyphs.get());
            result.segments.push_back(std::move(segment));
        }
        g_list_free(items);
        return result;
    }

    static AttributesPtr attributesFor(const Font& font, const Cut& cut) {
        AttributesPtr attributes{pango_attr_list_new()};
        const DescriptionPtr description{pango_font_description_from_string("Inter, sans-serif")};
        pango_font_description_set_weight(description.get(), cut.weight);
        pango_font_description_set_absolute_size(description.get(), cut.size * PANGO_SCALE);
        pango_attr_list_insert(attributes.get(), pango_attr_font_desc_new(description.get()));
        if (font.monospacedDigits)
            pango_attr_list_insert(attributes.get(), pango_attr_font_features_new("tnum"));
        return attributes;
    }

    static std::vector<double> characterAdvances(std::string_view text, const Shaped& shaped) {
        std::vector<double> result;
        for (const Segment& segment : shaped.segments) {
            std::vector<int> widths(static_cast<std::size_t>(segment.item->num_chars));
            pango_glyph_string_get_logical_widths(
                segment.glyphs.get(), text.data() + segment.item->offset, segment.item->length,
                segment.item->analysis.level, widths.data());
            for (const int width : widths) result.push_back(points(width) + shaped.cut.tracking);
        }
        return result;
    }

    GlyphLine glyphLine(const Shaped& shaped) {
        GlyphLine line;
        for (const Segment* segment : visualOrder(shaped)) {
            PangoFont* font = segment->item->analysis.font;
            GlyphRun run{held(font), shaped.cut.size, shaped.cut.stroke, isColored(font), {}};
            for (int i = 0; i < segment->glyphs->num_glyphs; ++i)
                append(segment->glyphs->glyphs[i], shaped.cut, line, run);
            if (run.font != nullptr) line.runs.push_back(std::move(run));
        }
        return line;
    }

    static void append(const PangoGlyphInfo& info, const Cut& cut, GlyphLine& line, GlyphRun& run) {
        const double tracking = info.geometry.width != 0 ? cut.tracking : 0;
        if (info.glyph != PANGO_GLYPH_EMPTY) {
            const bool missing = (info.glyph & PANGO_GLYPH_UNKNOWN_FLAG) != 0;
            // Strokes reach as far below the baseline as above the capitals; both move up.
            run.glyphs.push_back({missing ? 0 : info.glyph,
                                  {line.width + points(info.geometry.x_offset) + tracking / 2,
                                   points(info.geometry.y_offset) - cut.stroke / 2}});
        }
        line.width += points(info.geometry.width) + tracking;
    }

    static std::vector<const Segment*> visualOrder(const Shaped& shaped) {
        GList* items = nullptr;
        for (auto i = shaped.segments.rbegin(); i != shaped.segments.rend(); ++i)
            items = g_list_prepend(items, i->item.get());
        GList* reordered = pango_reorder_items(items);
        std::vector<const Segment*> result;
        for (GList* link = reordered; link != nullptr; link = link->next) {
            const auto isIt = [&](const Segment& s) { return s.item.get() == link->data; };
            result.push_back(&*std::find_if(shaped.segments.begin(), shaped.segments.end(), isIt));
        }
        g_list_free(reordered);
        g_list_free(items);
        return result;
    }

    /// A font, kept for as long as the lines that use it.
    PangoFont* held(PangoFont* font) {
        if (font != nullptr && !faces_.contains(font))
            faces_.emplace(font, Face{FontPtr{static_cast<PangoFont*>(g_object_ref(font))}, {}});
        return font;
    }

    struct Face {
        FontPtr font{};
        FacePtr cairo{};  ///< made when it is asked for
    };

    std::string language_;
    MapPtr own_{};
    ContextPtr ownContext_{};
    MapPtr machine_{};
    ContextPtr machineContext_{};
    std::map<PangoFont*, Face> faces_{};
    std::map<Key, GlyphLine> lines_{};
};

PangoTypesetter::PangoTypesetter(std::string_view locale)
    : shaper_(std::make_unique<Shaper>(locale)) {}
PangoTypesetter::~PangoTypesetter() = default;

double PangoTypesetter::width(std::string_view text, const Font& font) {
    return text.empty() ? 0 : line(text, font).width;
}

std::vector<views::Cluster> PangoTypesetter::clusters(std::string_view text, const Font& font) {
    return text.empty() ? std::vector<views::Cluster>{} : shaper_->clusters(text, font);
}

views::Size PangoTypesetter::symbolSize(std::string_view name, const Font& font) {
    const views::Size ems = symbol(name, font.weight).size;
    return {ems.width * font.size, ems.height * font.size};
}

const GlyphLine& PangoTypesetter::line(std::string_view text, const Font& font) {
    return shaper_->line(text, font);
}

views::Path PangoTypesetter::outline(const GlyphRun& run) const {
    if (run.colored) return {};
    OutlineReader reader;
    hb_font_t* font = pango_font_get_hb_font(run.font);
    for (const Glyph& glyph : run.glyphs) reader.append(font, glyph);
    return reader.path();
}

_cairo_font_face* PangoTypesetter::face(const GlyphRun& run) {
    return shaper_->cairoFace(run.font);
}

}  // namespace tessary::drawing
