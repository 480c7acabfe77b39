// What layout is told about type: how wide texts and symbols are, and where a line may end.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "platform/views/font.h"
#include "platform/views/geometry.h"

namespace tessary::views {

/// One character as a reader sees it, however many code points it takes.
struct Cluster {
    std::size_t start{};   ///< where its bytes begin in the line
    std::size_t length{};  ///< in bytes
    double advance{};      ///< its share of the line's width, in points
    bool space{};          ///< white space: takes no room at the end of a line
    bool breakAfter{};     ///< a line may end behind it
    bool operator==(const Cluster&) const = default;
};

/// Measures type. The texts it is given are single lines of valid UTF-8 without control characters.
/// Widths are points at the font's own size and scale with it. An implementation may remember what
/// it measured, so one object serves one thread at a time.
class Typesetter {
public:
    virtual ~Typesetter() = default;
    virtual double width(std::string_view line, const Font& font) = 0;
    /// The line's clusters in the order of the text; their advances add up to about its width.
    virtual std::vector<Cluster> clusters(std::string_view line, const Font& font) = 0;
    virtual Size symbolSize(std::string_view name, const Font& font) = 0;
};

}  // namespace tessary::views
