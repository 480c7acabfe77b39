// One font file, or one font that Pango chose: its glyphs' shapes, and texts set in it.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/views/path.h"

struct hb_font_t;
struct _FcPattern;
struct _cairo_font_face;

namespace tessary::drawing {

/// A glyph as a text is set in it; lengths in the face's own units.
struct SetGlyph {
    std::uint32_t index{};
    std::size_t byte{};  ///< where its character, or the first of them, begins in the text
    double advance{};
    double dx{};  ///< where it is drawn, from where it stands; to the right
    double dy{};  ///< upward
};

/// Not copied: painters refer to it.
class FontFace {
public:
    /// The font in a file, in the units that it was drawn in; none where there is no such file.
    static std::unique_ptr<FontFace> open(const std::string& file);
    /// A font as Pango set it up, in Pango's units. Both arguments stay the caller's.
    FontFace(hb_font_t* font, _FcPattern* pattern);
    ~FontFace();
    FontFace(const FontFace&) = delete;
    FontFace& operator=(const FontFace&) = delete;

    /// Whether it can set a text on its own: it has every character, all run from left to right,
    /// and none asks for an emoji.
    bool covers(std::string_view text) const;
    /// A text that it covers, in one line.
    std::vector<SetGlyph> set(std::string_view text, bool monospacedDigits) const;
    double unitsPerEm() const;

    /// Adds a glyph's outline to a path: its origin at `origin`, a unit `scale` long.
    void addOutline(std::uint32_t glyph, views::Point origin, double scale,
                    views::Path& path) const;
    /// The same font for Cairo; it stays this face's.
    _cairo_font_face* cairoFace() const;

private:
    struct Parts;
    explicit FontFace(std::unique_ptr<Parts> parts);
    std::unique_ptr<Parts> parts_;
};

}  // namespace tessary::drawing
