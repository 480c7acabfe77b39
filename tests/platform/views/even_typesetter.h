// Type whose sizes can be added up in the head: with the font `plain` a character is 5 points wide,
// a symbol 13, and a line 11 points high.
#pragma once

#include <algorithm>
#include <string_view>

#include "platform/foundation/utf8.h"
#include "platform/views/typesetter.h"

namespace tessary::views {

inline constexpr Font plain = Font::system(11 / Font::system(1).lineHeight());

/// A line may end behind a space and a hyphen. A combining acute belongs to the letter before it.
class EvenTypesetter final : public Typesetter {
public:
    double width(std::string_view line, const Font& font) override {
        double sum = 0;
        for (const Cluster& cluster : clusters(line, font)) sum += cluster.advance;
        return sum;
    }
    std::vector<Cluster> clusters(std::string_view line, const Font& font) override {
        ++questions;
        measuredBytes += line.size();
        std::vector<Cluster> result;
        for (std::size_t at = 0; at < line.size();) {
            const auto length =
                std::max<std::size_t>(foundation::leadingCharacterLength(line.substr(at)), 1);
            const bool space = line[at] == ' ';
            if (line.substr(at, length) == "\u0301" && !result.empty())
                result.back().length += length;
            else
                result.push_back(
                    {at, length, font.lineHeight() * 5 / 11, space, space || line[at] == '-'});
            at += length;
        }
        return result;
    }
    Size symbolSize(std::string_view, const Font& font) override {
        return {font.lineHeight() * 13 / 11, font.lineHeight()};
    }

    std::size_t questions{};
    std::size_t measuredBytes{};
};

}  // namespace tessary::views
