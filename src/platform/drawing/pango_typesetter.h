// Setting type: texts become glyphs, with the typeface that stands in for the system font.
//
// The stand-in is scaled so that its capitals are as tall as the system font's; the rounded design
// is its light weight with round strokes added. A text that it covers is set in it alone, from its
// own file, so that it looks the same whatever else is installed. What it lacks (other scripts,
// emoji) Pango sets from the machine's fonts, which are looked at only then: that takes a list of
// all fonts, and threads that Pango starts to read it.
//
//     PangoTypesetter typesetter{"en_US"};
//     typesetter.width("Alarms firing", Font::system(11, Weight::medium))     // about 78 points
//     typesetter.line("Alarms firing", Font::system(11)).runs     // what a painter draws
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/drawing/font_face.h"
#include "platform/views/typesetter.h"

namespace tessary::drawing {

/// One glyph of a run; its origin in points from the left end of the line's baseline.
struct Glyph {
    std::uint32_t index{};
    views::Point origin{};
};

/// Glyphs of one font, in the order in which they stand from left to right.
struct GlyphRun {
    const FontFace* face{};  ///< owned by the typesetter
    double size{};           ///< of the font, in points
    double unit{};           ///< length of one of the face's units, in points
    double stroke{};         ///< width of a round stroke added to the outlines, in points
    bool colored{};          ///< glyphs bring colours of their own, as emoji do
    std::vector<Glyph> glyphs{};

    /// The outlines, from the left end of the line's baseline; empty for coloured glyphs.
    views::Path outline() const;
};

struct GlyphLine {
    double width{};  ///< points
    std::vector<GlyphRun> runs{};
};

/// Measures and sets type, remembering each line. For one thread at a time.
class PangoTypesetter final : public views::Typesetter {
public:
    /// `locale` ("ja_JP") decides between regional forms of the same characters. Throws
    /// std::runtime_error where no font can be read.
    explicit PangoTypesetter(std::string_view locale);
    ~PangoTypesetter() override;

    double width(std::string_view line, const views::Font& font) override;
    std::vector<views::Cluster> clusters(std::string_view line, const views::Font& font) override;
    views::Size symbolSize(std::string_view name, const views::Font& font) override;

    /// The glyphs of a line. The reference holds until the typesetter goes or forgets.
    const GlyphLine& line(std::string_view text, const views::Font& font);

    /// Forgets the lines that it remembers once they are many, so that one that is kept for long
    /// does not grow: call it between two pictures.
    void forgetIfMany();

private:
    class Shaper;
    std::unique_ptr<Shaper> shaper_;
};

}  // namespace tessary::drawing
