#include "platform/drawing/card.h"

#include <cmath>
#include <gtest/gtest.h>
#include <set>
#include <tuple>

namespace tessary::drawing {
namespace {

using views::Path;
using views::Point;
using views::Rect;
using Verb = views::PathCommand::Verb;

constexpr Rect cards[] = {
    {{0, 0}, {164, 164}}, {{3, 5}, {344, 164}}, {{0, 0}, {164, 50}}, {{1, 1}, {60, 61}},
    {{0, 0}, {45, 44}},   {{0, 0}, {10, 90}},   {{7, 7}, {1, 1}},
};

std::vector<Point> points(const Path& path) {
    std::vector<Point> result;
    for (const auto& [verb, to, control1, control2] : path.commands()) {
        if (verb == Verb::curve) result.insert(result.end(), {control1, control2});
        if (verb != Verb::close) result.push_back(to);
    }
    return result;
}

TEST(Card, FillsItsRectangle) {
    for (const Rect& card : cards) {
        for (const double radius : {0.0, 0.5, 22.0, 1e6}) {
            std::set<long> xs, ys;
            for (const Point& p : points(continuousRectangle(card, radius)))
                xs.insert(std::lround(p.x * 1e6)), ys.insert(std::lround(p.y * 1e6));
            EXPECT_EQ(*xs.begin(), std::lround(card.minX() * 1e6)) << radius;
            EXPECT_EQ(*xs.rbegin(), std::lround(card.maxX() * 1e6)) << radius;
            EXPECT_EQ(*ys.begin(), std::lround(card.minY() * 1e6)) << radius;
            EXPECT_EQ(*ys.rbegin(), std::lround(card.maxY() * 1e6)) << radius;
        }
    }
}

/// How much a curve bends at its start and at its end, as 1 / radius.
std::pair<double, double> bends(Point from, const views::PathCommand& curve) {
    const auto bend = [](Point a, Point b, Point c) {
        const double handle = std::hypot(b.x - a.x, b.y - a.y);
        const double cross = (b.x - a.x) * (c.y - b.y) - (b.y - a.y) * (c.x - b.x);
        return 2.0 / 3 * cross / std::pow(handle, 3);
    };
    return {bend(from, curve.control1, curve.control2),
            -bend(curve.to, curve.control2, curve.control1)};
}

TEST(Card, BendsWithoutAJumpUpToItsRadius) {
    for (const Rect& card : {cards[0], cards[1], cards[2], cards[3]}) {
        double before = 0;
        Point from;
        int arcs = 0;
        const Path outline = continuousRectangle(card, 22);
        for (const views::PathCommand& command : outline.commands()) {
            const bool curve = command.verb == Verb::curve;
            const auto [start, end] = curve ? bends(from, command) : std::pair{0.0, 0.0};
            EXPECT_NEAR(start * 22, before * 22, 0.02);
            before = end;
            from = command.to;
            arcs += std::abs(start * 22 - 1) < 0.02 && std::abs(end * 22 - 1) < 0.02;
        }
        EXPECT_EQ(arcs, 4);
    }
}

TEST(Card, HasNoCornersToRoundWithoutAnArea) {
    for (const Rect& card : {Rect{}, Rect{{1, 2}, {30, 0}}, Rect{{1, 2}, {0, 30}}})
        for (const Point& p : points(continuousRectangle(card, 22)))
            EXPECT_TRUE((p.x == card.minX() || p.x == card.maxX()) &&
                        (p.y == card.minY() || p.y == card.maxY()));
    for (const auto& [scale, width, height] :
         {std::tuple{1.0, 164, 50}, {1.25, 205, 63}, {3.0, 493, 150}, {4.0, 657, 200}})
        EXPECT_EQ(pixelSize({.size = {164.3, 50.1}, .scale = scale}), (PixelSize{width, height}));
}

}  // namespace
}  // namespace tessary::drawing
