#include "presentation/sparkline.h"

#include <gtest/gtest.h>
#include <limits>

#include "presentation/palette.h"
#include "support/rendering.h"

namespace tessary::presentation {
namespace {

using snapshot::SnapshotPoint;
using views::DisplayList;
using views::PathCommand;
using views::PathElement;
using views::Point;
using views::Size;
using views::Stroke;
using Verb = PathCommand::Verb;

constexpr Color blue = Color::rgb8(1, 2, 253);
constexpr auto most = std::numeric_limits<std::int64_t>::max();
constexpr auto least = std::numeric_limits<std::int64_t>::min();

DisplayList drawn(const Sparkline& chart, const Size& size, double scale) {
    views::Surface card = mediumCard;
    card.scale = scale;
    return rendered(
        views::View{chart}.frame(views::FixedFrame{.width = size.width, .height = size.height}),
        card);
}

PathElement pathAt(const DisplayList& list, std::size_t index) {
    return std::get<PathElement>(list.elements.at(index).content);
}

/// The commands lie, to a hundredth of a point, where the shares of `size` are: moves first, closes
/// after the last where `closed`.
void expectPath(const views::Path& path, const std::vector<Point>& shares, const Size& size,
                bool closed = false) {
    ASSERT_EQ(path.commands().size(), shares.size() + (closed ? 1 : 0));
    for (std::size_t i = 0; i < shares.size(); ++i) {
        const PathCommand command = path.commands()[i];
        EXPECT_EQ(command.verb, i == 0 ? Verb::move : Verb::line);
        EXPECT_NEAR(command.to.x, shares[i].x * size.width, 0.01);
        EXPECT_NEAR(command.to.y, shares[i].y * size.height, 0.01);
    }
    if (closed) {
        EXPECT_EQ(path.commands().back().verb, Verb::close);
    }
}

/// Calls with every size of frame that is drawn, edges between pixels included.
template <class Check>
void atManySizes(const Sparkline& chart, const Check& check) {
    for (const double scale : {1.0, 2.0, 3.0}) {
        for (const double width : {1.0, 7.3, 100.0, 131.75, 170.0, 312.0}) {
            for (const double height : {1.5, 10.0, 33.3, 67.59, 132.0}) {
                const DisplayList list = drawn(chart, {width, height}, scale);
                for (const auto& element : list.elements) {
                    EXPECT_NEAR(element.frame.size.width, width, 1 / scale);
                    EXPECT_NEAR(element.frame.size.height, height, 1 / scale);
                }
                check(list, list.elements.at(0).frame.size);
            }
        }
    }
}

TEST(Sparkline, ScalesTheSeriesAndItsThresholdIntoEveryFrame) {
    struct Case {
        std::vector<SnapshotPoint> points{};
        std::optional<double> threshold{};
        std::vector<Point> line{};  ///< shares of width and height
        double thresholdShare{};
    };
    const std::vector<Case> cases{
        {{{0, 10}, {10, 20}}, {}, {{0, 0.92}, {1, 0.08}}},
        {{{0, 10}, {10, 20}}, 30, {{0, 0.92}, {1, 0.5}}, 0.08},
        {{{0, 0}, {10, 10}}, -10, {{0, 0.5}, {1, 0.08}}, 0.92},
        {{{0, 10}, {10, 20}}, 12.5, {{0, 0.92}, {1, 0.08}}, 0.71},
        {{{5, 7}, {6, 7}, {9, 7}}, {}, {{0, 0.92}, {0.25, 0.92}, {1, 0.92}}},
        {{{5, 7}, {9, 7}}, 7, {{0, 0.92}, {1, 0.92}}, 0.92},
        {{{-20, -30}, {-10, -10}, {0, -20}}, {}, {{0, 0.92}, {0.5, 0.08}, {1, 0.5}}},
        {{{0, 0}, {30, 1}, {10, 2}, {40, 4}},
         {},
         {{0, 0.92}, {0.75, 0.71}, {0.25, 0.5}, {1, 0.08}}},
        {{{0, 4}, {-10, 0}, {20, 2}, {10, 3}}, {}, {{0, 0.08}, {-1, 0.92}, {2, 0.5}, {1, 0.29}}},
        {{{0, -1e308}, {1, 1e308}, {2, 0}}, {}, {{0, 0.92}, {0.5, 0.08}, {1, 0.5}}},
        {{{0, -1e308}, {2, 0}}, 1e308, {{0, 0.92}, {1, 0.5}}, 0.08},
        {{{least, 0}, {least / 2, 1}, {most, 2}, {-1, 4}},
         {},
         {{0, 0.92}, {0.5, 0.71}, {2, 0.5}, {1, 0.08}}}};
    const Stroke solid{blue, 1.5, views::LineCap::round, views::LineJoin::round, 10, {}, 0};
    const Stroke dashed{Palette::danger.withOpacity(0.8),
                        1,
                        views::LineCap::butt,
                        views::LineJoin::miter,
                        10,
                        {3, 3},
                        0};
    for (const auto& each : cases) {
        SCOPED_TRACE(&each - cases.data());
        auto outline = each.line;
        outline.insert(outline.end(), {{1, 1}, {0, 1}});
        atManySizes({each.points, each.threshold, blue}, [&](const auto& list, const Size& size) {
            ASSERT_EQ(list.elements.size(), each.threshold ? 3 : 2);
            expectPath(pathAt(list, 0).path, outline, size, true);
            EXPECT_EQ(pathAt(list, 0).paint,
                      (views::Paint{views::Fill{{blue.withOpacity(0.22), blue.withOpacity(0)}}}));
            expectPath(pathAt(list, 1).path, each.line, size);
            EXPECT_EQ(pathAt(list, 1).paint, views::Paint{solid});
            if (!each.threshold) return;
            const double y = each.thresholdShare;
            expectPath(pathAt(list, 2).path, {{0, y}, {1, y}}, size);
            EXPECT_EQ(pathAt(list, 2).paint, views::Paint{dashed});
        });
    }
}

TEST(Sparkline, IsALineAtTheBottomWithoutATimeSpan) {
    const Stroke thin{Palette::divider, 1, views::LineCap::butt, views::LineJoin::miter, 10, {}, 0};
    for (const std::vector<SnapshotPoint>& points :
         std::vector<std::vector<SnapshotPoint>>{{},
                                                 {{5, 1}},
                                                 {{5, 1}, {5, 2}},
                                                 {{5, 1}, {9, 3}, {5, 2}},
                                                 {{6, 1}, {5, 2}},
                                                 {{most, 1}, {least, 2}},
                                                 {{least, 1}, {most, 2}},
                                                 {{least, 1}, {0, 2}},
                                                 {{-1, 1}, {most, 2}}}) {
        for (const auto threshold : {std::optional<double>{}, std::optional{1.5}}) {
            atManySizes({points, threshold, blue}, [&](const DisplayList& list, const Size& size) {
                ASSERT_EQ(list.elements.size(), 1);
                const double y = 1 - 1 / size.height;
                expectPath(pathAt(list, 0).path, {{0, y}, {1, y}}, size);
                EXPECT_EQ(pathAt(list, 0).paint, views::Paint{thin});
            });
        }
    }
}

}  // namespace
}  // namespace tessary::presentation
