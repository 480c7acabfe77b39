#include "platform/drawing/pango_typesetter.h"

#include <algorithm>
#include <fontconfig/fontconfig.h>
#include <map>
#include <pango/pango.h>
#include <pango/pangofc-font.h>
#include <pango/pangofc-fontmap.h>
#include <pango/pangoft2.h>
#include <stdexcept>
#include <tuple>
#include <utility>

#include "platform/drawing/machine_fonts.h"
#include "platform/drawing/pango_work.h"
#include "platform/drawing/release.h"
#include "platform/drawing/symbols.h"

namespace tessary::drawing {

using views::Font;
using views::FontDesign;
using views::Weight;

namespace {

/// Measured on the stand-in: the height of its capitals, in ems.
constexpr double standInCapHeight = 0.727273;

/// A file of the stand-in.
struct StandInCut {
    PangoWeight weight{};
    const char* file{};
};
constexpr StandInCut light{PANGO_WEIGHT_LIGHT, TESSARY_FONT_DIR "/Inter-Light.otf"};

/// What a weight is made of: a cut of its own, or for the rounded design round strokes added to the
/// light one, and the room they take, in ems.
struct Makings {
    StandInCut cut{};
    double stroke{};
    double tracking{};
};
constexpr Makings makings(Weight weight) {
    switch (weight) {
        case Weight::regular:
            return {{PANGO_WEIGHT_NORMAL, TESSARY_FONT_DIR "/Inter-Regular.otf"}, 0.018, 0.008};
        case Weight::medium:
            return {{PANGO_WEIGHT_MEDIUM, TESSARY_FONT_DIR "/Inter-Medium.otf"}, 0.042, 0.020};
        case Weight::semibold:
            return {{PANGO_WEIGHT_SEMIBOLD, TESSARY_FONT_DIR "/Inter-SemiBold.otf"}, 0.064, 0.030};
    }
    return {};
}

/// How a font of the system is made of the stand-in.
struct Cut {
    StandInCut of{};
    double size{};      ///< of the stand-in, in points
    double stroke{};    ///< points
    double tracking{};  ///< points added to each glyph's advance
};

Cut plainCut(const Font& font) {
    return {makings(font.weight).cut, font.capHeight() / standInCapHeight, 0, 0};
}

/// The strokes make the capitals taller, so the outlines are set smaller by as much.
Cut roundedCut(const Font& font) {
    const Makings round = makings(font.weight);
    const double size = font.capHeight() / (standInCapHeight + round.stroke);
    return {light, size, round.stroke * size, round.tracking * size};
}

using MapPtr = Owned<PangoFontMap, g_object_unref>;
using ContextPtr = Owned<PangoContext, g_object_unref>;
using AttributesPtr = Owned<PangoAttrList, pango_attr_list_unref>;
using DescriptionPtr = Owned<PangoFontDescription, pango_font_description_free>;
using GlyphsPtr = Owned<PangoGlyphString, pango_glyph_string_free>;
using FontPtr = Owned<PangoFont, g_object_unref>;
using ItemPtr = Owned<PangoItem, pango_item_free>;

/// Glyph positions are exact: no hinting, no rounding, so widths scale with the size.
void withoutHinting(FcPattern* pattern, gpointer) {
    FcPatternDel(pattern, FC_HINTING);
    FcPatternAddBool(pattern, FC_HINTING, FcFalse);
}

double points(int pangoUnits) { return static_cast<double>(pangoUnits) / PANGO_SCALE; }

/// A stretch of a line in one font, direction and script, with its glyphs, as Pango set it.
struct Segment {
    ItemPtr item{};
    GlyphsPtr glyphs{};
};
using Segments = std::vector<Segment>;

bool isColored(PangoFont* font) {
    FcBool color = FcFalse;
    FcPattern* pattern = pango_fc_font_get_pattern(PANGO_FC_FONT(font));
    return FcPatternGetBool(pattern, FC_COLOR, 0, &color) == FcResultMatch && color == FcTrue;
}

/// How wide each character of a text is, in points, from how its glyphs stand in it: what several
/// characters share, as in a ligature, they share equally.
std::vector<double> characterAdvances(std::string_view text, const std::vector<SetGlyph>& glyphs,
                                      double unit, double tracking) {
    std::map<std::size_t, double> advanceAt;
    for (const SetGlyph& glyph : glyphs)
        advanceAt[glyph.byte] += glyph.advance * unit + (glyph.advance != 0 ? tracking : 0);
    std::vector<double> result;
    for (auto at = advanceAt.begin(); at != advanceAt.end(); ++at) {
        const std::size_t end =
            std::next(at) == advanceAt.end() ? text.size() : std::next(at)->first;
        const auto count = static_cast<std::size_t>(
            g_utf8_strlen(&text[at->first], static_cast<gssize>(end - at->first)));
        result.insert(result.end(), count, at->second / static_cast<double>(count));
    }
    return result;
}

}  // namespace

/// A text is set in one of two ways: in the stand-in alone where that covers it, else by Pango from
/// the machine's fonts. Those have no round strokes to offer, so such a text is set plainly.
class PangoTypesetter::Shaper {
public:
    explicit Shaper(std::string_view locale) : language_(locale) {
        std::replace(language_.begin(), language_.end(), '_', '-');
    }

    const GlyphLine& line(std::string_view text, const Font& font) {
        const Key key{std::string{text}, font.size, font.weight, font.design,
                      font.monospacedDigits};
        const auto found = lines_.find(key);
        if (found != lines_.end()) return found->second;
        remembered_ += text.size();
        return lines_.emplace(key, made(text, font)).first->second;
    }

    void forgetIfMany() {
        constexpr std::size_t many = 16U << 10U;  // bytes of text, some twenty pictures' worth
        if (remembered_ < many) return;
        lines_.clear();
        remembered_ = 0;
    }

    std::vector<views::Cluster> clusters(std::string_view text, const Font& font) {
        const std::vector<double> widths = advances(text, font);
        std::vector<PangoLogAttr> attributes(widths.size() + 1);
        pango_get_log_attrs(text.data(), static_cast<int>(text.size()), -1,
                            pango_language_from_string(language_.c_str()), attributes.data(),
                            static_cast<int>(attributes.size()));
        std::vector<views::Cluster> result;
        std::size_t byte = 0;
        for (std::size_t i = 0; i < widths.size(); ++i) {
            const auto length =
                static_cast<std::size_t>(g_utf8_next_char(&text[byte]) - &text[byte]);
            if (result.empty() || attributes[i].is_cursor_position)
                result.push_back({byte, 0, 0, attributes[i].is_white != 0, false});
            result.back().length += length;
            result.back().advance += widths[i];
            result.back().breakAfter = attributes[i + 1].is_line_break != 0;
            byte += length;
        }
        return result;
    }

private:
    using Key = std::tuple<std::string, double, Weight, FontDesign, bool>;

    static Cut standInCutFor(const Font& font) {
        return font.design == FontDesign::rounded ? roundedCut(font) : plainCut(font);
    }

    GlyphLine made(std::string_view text, const Font& font) {
        const Cut cut = standInCutFor(font);
        const FontFace* face = covering(text, cut);
        if (face != nullptr) return standInLine(*face, face->set(text, font.monospacedDigits), cut);
        return machineLine(segments(text, font), plainCut(font));
    }

    std::vector<double> advances(std::string_view text, const Font& font) {
        const Cut cut = standInCutFor(font);
        const FontFace* face = covering(text, cut);
        if (face == nullptr) return machineAdvances(text, segments(text, font));
        return characterAdvances(text, face->set(text, font.monospacedDigits),
                                 cut.size / face->unitsPerEm(), cut.tracking);
    }

    // ---- In the stand-in ---------------------------------------------------------------------

    /// The stand-in's face for a cut, where it can set the text on its own.
    const FontFace* covering(std::string_view text, const Cut& cut) {
        auto found = standIns_.find(cut.of.weight);
        if (found == standIns_.end())
            found = standIns_.emplace(cut.of.weight, FontFace::open(cut.of.file)).first;
        const FontFace* face = found->second.get();
        return face != nullptr && face->covers(text) ? face : nullptr;
    }

    static GlyphLine standInLine(const FontFace& face, const std::vector<SetGlyph>& glyphs,
                                 const Cut& cut) {
        const double unit = cut.size / face.unitsPerEm();
        GlyphLine line;
        GlyphRun run{&face, cut.size, unit, cut.stroke, false, {}};
        for (const SetGlyph& glyph : glyphs) {
            const double tracking = glyph.advance != 0 ? cut.tracking : 0;
            // Strokes reach as far below the baseline as above the capitals; both move up.
            run.glyphs.push_back(
                {glyph.index,
                 {line.width + glyph.dx * unit + tracking / 2, -glyph.dy * unit - cut.stroke / 2}});
            line.width += glyph.advance * unit + tracking;
        }
        line.runs.push_back(std::move(run));
        return line;
    }

    // ---- By Pango ----------------------------------------------------------------------------

    PangoContext* machineContext() {
        if (machineContext_) return machineContext_.get();
        FcConfig* const fonts = machineFonts();
        machine_.reset(pango_ft2_font_map_new());
        PangoFcFontMap* const map = PANGO_FC_FONT_MAP(machine_.get());
        pango_fc_font_map_set_config(map, fonts);
        pango_fc_font_map_set_default_substitute(map, withoutHinting, nullptr, nullptr);
        machineContext_.reset(pango_font_map_create_context(machine_.get()));
        pango_context_set_round_glyph_positions(machineContext_.get(), FALSE);
        pango_context_set_language(machineContext_.get(),
                                   pango_language_from_string(language_.c_str()));
        return machineContext_.get();
    }

    Segments segments(std::string_view text, const Font& font) {
        Segments result;
        const auto length = static_cast<int>(text.size());
        const AttributesPtr attributes = attributesFor(font, plainCut(font));
        // The first strong character decides the direction; a text without any runs to the right.
        GList* items =
            pango_itemize_with_base_dir(machineContext(), PANGO_DIRECTION_WEAK_LTR, text.data(), 0,
                                        length, attributes.get(), nullptr);
        for (GList* link = items; link != nullptr; link = link->next) {
            Segment segment{ItemPtr{static_cast<PangoItem*>(link->data)},
                            GlyphsPtr{pango_glyph_string_new()}};
            pango_shape_full(text.data() + segment.item->offset, segment.item->length, text.data(),
                             length, &segment.item->analysis, segment.glyphs.get());
            result.push_back(std::move(segment));
        }
        g_list_free(items);
        return result;
    }

    static AttributesPtr attributesFor(const Font& font, const Cut& cut) {
        AttributesPtr attributes{pango_attr_list_new()};
        const DescriptionPtr description{pango_font_description_from_string("Inter, sans-serif")};
        pango_font_description_set_weight(description.get(), cut.of.weight);
        pango_font_description_set_absolute_size(description.get(), cut.size * PANGO_SCALE);
        pango_attr_list_insert(attributes.get(), pango_attr_font_desc_new(description.get()));
        if (font.monospacedDigits)
            pango_attr_list_insert(attributes.get(), pango_attr_font_features_new("tnum"));
        return attributes;
    }

    static std::vector<double> machineAdvances(std::string_view text, const Segments& segments) {
        std::vector<double> result;
        for (const Segment& segment : segments) {
            std::vector<int> widths(static_cast<std::size_t>(segment.item->num_chars));
            pango_glyph_string_get_logical_widths(
                segment.glyphs.get(), text.data() + segment.item->offset, segment.item->length,
                segment.item->analysis.level, widths.data());
            for (const int width : widths) result.push_back(points(width));
        }
        return result;
    }

    GlyphLine machineLine(const Segments& segments, const Cut& cut) {
        GlyphLine line;
        for (const Segment* segment : visualOrder(segments)) {
            PangoFont* font = segment->item->analysis.font;
            GlyphRun run{nullptr, cut.size, points(1), 0, font != nullptr && isColored(font), {}};
            if (font != nullptr) run.face = &faceOf(font);
            for (int i = 0; i < segment->glyphs->num_glyphs; ++i)
                append(segment->glyphs->glyphs[i], line, run);
            if (run.face != nullptr) line.runs.push_back(std::move(run));
        }
        return line;
    }

    static void append(const PangoGlyphInfo& info, GlyphLine& line, GlyphRun& run) {
        if (info.glyph != PANGO_GLYPH_EMPTY) {
            const bool missing = (info.glyph & PANGO_GLYPH_UNKNOWN_FLAG) != 0;
            run.glyphs.push_back(
                {missing ? 0 : info.glyph,
                 {line.width + points(info.geometry.x_offset), points(info.geometry.y_offset)}});
        }
        line.width += points(info.geometry.width);
    }

    static std::vector<const Segment*> visualOrder(const Segments& segments) {
        GList* items = nullptr;
        for (auto i = segments.rbegin(); i != segments.rend(); ++i)
            items = g_list_prepend(items, i->item.get());
        GList* reordered = pango_reorder_items(items);
        std::vector<const Segment*> result;
        for (GList* link = reordered; link != nullptr; link = link->next) {
            const auto isIt = [&](const Segment& s) { return s.item.get() == link->data; };
            result.push_back(&*std::find_if(segments.begin(), segments.end(), isIt));
        }
        g_list_free(reordered);
        g_list_free(items);
        return result;
    }

    /// The face of a font that Pango chose. The font is kept, so that its address stays its own.
    const FontFace& faceOf(PangoFont* font) {
        auto found = faces_.find(font);
        if (found == faces_.end()) {
            auto face = std::make_unique<FontFace>(pango_font_get_hb_font(font),
                                                   pango_fc_font_get_pattern(PANGO_FC_FONT(font)));
            Kept kept{FontPtr{static_cast<PangoFont*>(g_object_ref(font))}, std::move(face)};
            found = faces_.emplace(font, std::move(kept)).first;
        }
        return *found->second.face;
    }

    struct Kept {
        FontPtr font{};
        std::unique_ptr<FontFace> face{};
    };

    std::string language_;
    std::map<PangoWeight, std::unique_ptr<FontFace>> standIns_{};
    PangosWork work_{};
    MapPtr machine_{};
    ContextPtr machineContext_{};
    std::map<PangoFont*, Kept> faces_{};
    std::map<Key, GlyphLine> lines_{};
    std::size_t remembered_{};  ///< bytes of the texts in `lines_`
};

views::Path GlyphRun::outline() const {
    views::Path path;
    if (colored) return path;
    for (const Glyph& glyph : glyphs) face->addOutline(glyph.index, glyph.origin, unit, path);
    return path;
}

PangoTypesetter::PangoTypesetter(std::string_view locale)
    : shaper_(std::make_unique<Shaper>(locale)) {
    const auto fonts = haveFonts();
    if (!fonts) throw std::runtime_error{fonts.fault().message()};
}
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

void PangoTypesetter::forgetIfMany() { shaper_->forgetIfMany(); }

}  // namespace tessary::drawing
