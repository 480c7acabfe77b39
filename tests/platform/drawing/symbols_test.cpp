#include "platform/drawing/symbols.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <string>
#include <tuple>

namespace tessary::drawing {
namespace {

using views::Point;
using views::Weight;
using Verb = views::PathCommand::Verb;
using Line = std::vector<Point>;

constexpr double frameHeight = views::Font{1}.lineHeight();
constexpr const char* person = "person.crop.circle.badge.exclamationmark";
constexpr auto weights = {Weight::regular, Weight::medium, Weight::semibold};

/// The subpaths as polygons. Those that are to enclose something have to begin and to close.
std::vector<Line> flattened(const views::Path& path, bool closed) {
    std::vector<Line> lines;
    Verb last = Verb::close;
    for (const auto& [verb, to, control1, control2] : path.commands()) {
        EXPECT_TRUE(!closed || (last == Verb::close) == (verb == Verb::move));
        last = verb;
        if (verb == Verb::move || lines.empty()) lines.emplace_back();
        Line& line = lines.back();
        const Point from = line.empty() ? to : line.back();
        for (int i = 1; verb == Verb::curve && i < 16; ++i) {
            const double t = i / 16.0, s = 1 - t, a = s * s * s, b = 3 * s * s * t;
            line.push_back({a * from.x + b * control1.x + t * t * (3 * s * control2.x + t * to.x),
                            a * from.y + b * control1.y + t * t * (3 * s * control2.y + t * to.y)});
        }
        line.push_back(verb == Verb::close ? line.front() : to);
    }
    EXPECT_TRUE(!closed || last == Verb::close);
    return lines;
}

/// How often the line turns around the point, and how far from it it passes.
std::pair<int, double> turnsAndDistance(Point p, const Line& line) {
    int turns = 0;
    double nearest = 9;  // squared
    for (std::size_t i = 1; i < line.size(); ++i) {
        const Point a{line[i - 1].x - p.x, line[i - 1].y - p.y};
        const Point d{line[i].x - line[i - 1].x, line[i].y - line[i - 1].y};
        if ((a.y <= 0) != (a.y + d.y <= 0) && a.x > a.y / d.y * d.x) turns += d.y > 0 ? 1 : -1;
        const double along = -(a.x * d.x + a.y * d.y) / std::max(d.x * d.x + d.y * d.y, 1e-12);
        const double t = std::clamp(along, 0.0, 1.0);
        nearest = std::min(nearest, std::pow(a.x + t * d.x, 2) + std::pow(a.y + t * d.y, 2));
    }
    return {turns, std::sqrt(nearest)};
}

struct Shape {
    double stroke;
    std::vector<Line> lines, cutout;

    bool covers(Point p) const {
        int cuts = 0, inside = 0;
        for (const Line& line : cutout) cuts += std::abs(turnsAndDistance(p, line).first);
        for (const Line& line : lines) {
            const auto [turns, distance] = turnsAndDistance(p, line);
            EXPECT_TRUE(stroke > 0 || std::abs(turns) <= 1) << "an outline crosses itself";
            inside += stroke > 0 ? 2 * (distance <= stroke / 2) : std::abs(turns);
        }
        EXPECT_LE(cuts, 1) << "cutouts overlap";
        return cuts == 0 && (stroke > 0 ? inside > 0 : inside % 2 == 1);
    }
};

/// A symbol, how far its ink reaches, and what covers a place.
struct Drawn {
    Drawn(std::string_view name, Weight weight) : size{symbol(name, weight).size} {
        for (const SymbolPart& part : symbol(name, weight).parts) {
            const double by = part.stroke / 2;
            shapes.push_back(
                {part.stroke, flattened(part.path, by == 0), flattened(part.cutout, true)});
            for (const Line& line : shapes.back().lines) {
                for (const Point p : line) {
                    left = std::min(left, p.x - by), right = std::max(right, p.x + by);
                    top = std::min(top, p.y - by), bottom = std::max(bottom, p.y + by);
                }
            }
        }
    }
    auto layers(Point p) const {
        return std::ranges::count_if(shapes, [&](auto& shape) { return shape.covers(p); });
    }
    /// Visits the places with ink, a fine grid of them, and counts them.
    template <class Visit>
    int sweep(Visit visit) const {
        int count = 0;
        for (int i = 0; i < 80 * 100; ++i) {
            const int row = i / 100;
            const Point p{(i % 100 + 0.5) / 75, (row + 0.5) * frameHeight / 80};
            if (const auto covering = layers(p); covering > 0) visit(p, covering), ++count;
        }
        return count;
    }
    views::Size size;
    std::vector<Shape> shapes{};
    double left{9}, right{-9}, top{9}, bottom{-9};
};

TEST(Symbols, HaveTheirNamesInAlphabeticalOrder) {
    constexpr std::string_view names[] = {"bell.slash",
                                          "checkmark.circle.fill",
                                          "exclamationmark.triangle.fill",
                                          "hand.tap",
                                          "lock.fill",
                                          "pause.circle.fill",
                                          person,
                                          "pin.slash"};
    EXPECT_TRUE(std::ranges::equal(symbolNames(), names));
    const Symbol unknown = symbol("no.such.symbol", Weight::medium);
    for (const auto name : names) EXPECT_NE(symbol(name, Weight::medium), unknown) << name;
    for (const auto name : {"", "bell", "bell.slash ", "Bell.slash"})
        EXPECT_EQ(symbol(name, Weight::medium), unknown) << name;
}

TEST(Symbols, FillTheirFramesOnceAndMoreOfThemForHeavierWeights) {
    std::vector<std::string> names(symbolNames().begin(), symbolNames().end());
    names.emplace_back("no.such.symbol");
    for (const std::string& name : names) {
        SCOPED_TRACE(name);
        int before = 0;
        for (const Weight weight : weights) {
            const Drawn drawn{name, weight};
            EXPECT_DOUBLE_EQ(drawn.size.height, frameHeight);
            EXPECT_NEAR(drawn.size.width, 1, 0.4);
            EXPECT_NEAR(drawn.left, 0.03, 0.001);
            EXPECT_NEAR(drawn.right, drawn.size.width - 0.03, 0.001);
            EXPECT_NEAR(drawn.bottom - drawn.top, 1.03, 0.12);
            EXPECT_NEAR((drawn.top + drawn.bottom) / 2, frameHeight / 2, 0.045);
            EXPECT_GE(std::min(drawn.top, frameHeight - drawn.bottom), 0);
            const int ink = drawn.sweep([](Point, auto layers) { EXPECT_EQ(layers, 1); });
            EXPECT_GT(ink, before + 10);
            before = ink;
        }
    }
}

TEST(Symbols, KeepClearOfTheSlashOrBadgeOverThem) {
    for (const auto name : {"bell.slash", "pin.slash", person}) {
        for (const Weight weight : weights) {
            const Drawn drawn{name, weight};
            const Shape& over = drawn.shapes.back();
            drawn.sweep([&](Point p, auto) {
                if (over.covers(p)) return;
                const double distance = turnsAndDistance(p, over.lines.front()).second;
                EXPECT_GE(distance, over.stroke / 2 + 0.07) << name;
            });
        }
    }
}

TEST(Symbols, LeaveTheirMarksFree) {
    // Places from the left end of the ink and the middle of the frame, and whether there is ink.
    constexpr std::tuple<const char*, Point, bool> places[] = {
        {"checkmark.circle.fill", {0.44, 0.18}, false},
        {"checkmark.circle.fill", {0.44, 0}, true},
        {"pause.circle.fill", {0.38, 0}, false},
        {"pause.circle.fill", {0.5, 0}, true},
        {"exclamationmark.triangle.fill", {0.54, -0.1}, false},
        {"exclamationmark.triangle.fill", {0.54, 0.4}, true},
        {"lock.fill", {0.325, -0.2}, false},
        {"lock.fill", {0.325, 0.2}, true},
        {person, {0.855, 0.2}, false},
        {person, {0.7, 0.28}, true},
    };
    for (const auto& [name, at, ink] : places) {
        for (const Weight weight : weights) {
            const Drawn drawn{name, weight};
            EXPECT_EQ(drawn.layers({drawn.left + at.x, frameHeight / 2 + at.y}), ink ? 1 : 0)
                << name << " at " << at.x << ", " << at.y;
        }
    }
}

}  // namespace
}  // namespace tessary::drawing
