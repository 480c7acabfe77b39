#include "platform/drawing/card.h"

#include <gtest/gtest.h>

#include "support/dump.h"
#include "support/golden.h"

namespace tessary::drawing {
namespace {

/// Large ones, ones that have no room for all of the corner, and ones without an area; at last
/// corners of other radii.
TEST(Card, LooksAsItDid) {
    views::DisplayList cards;
    const auto add = [&](const views::Rect& card, double radius) {
        cards.elements.push_back(
            {card, false, views::PathElement{continuousRectangle(card, radius), views::Fill{}}});
    };
    for (const auto& [x, y, width, height] : {std::array{0, 0, 164, 164},
                                              {3, 5, 344, 164},
                                              {0, 0, 164, 50},
                                              {1, 1, 60, 61},
                                              {3, 5, 45, 44},
                                              {3, 5, 10, 90},
                                              {7, 7, 1, 1},
                                              {0, 0, 0, 0},
                                              {1, 2, 30, 0},
                                              {1, 2, 0, 30}})
        add({{double(x), double(y)}, {double(width), double(height)}}, 22);
    for (const double radius : {0.0, 0.5, 1e6}) add({{3, 5}, {344, 164}}, radius);
    expectGolden("cards.txt", Dump{cards}.text());
}

TEST(Card, HasWholePixels) {
    for (const auto& [scale, width, height] :
         {std::tuple{1.0, 164, 50}, {1.25, 205, 63}, {3.0, 493, 150}, {4.0, 657, 200}})
        EXPECT_EQ(pixelSize({.size = {164.3, 50.1}, .scale = scale}), (PixelSize{width, height}));
}

}  // namespace
}  // namespace tessary::drawing
