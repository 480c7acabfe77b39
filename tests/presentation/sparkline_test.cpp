#include "presentation/sparkline.h"

#include <gtest/gtest.h>
#include <limits>

#include "support/golden.h"
#include "support/rendering.h"

namespace tessary::presentation {
namespace {

constexpr views::Color blue = views::Color::rgb8(1, 2, 253);
constexpr auto most = std::numeric_limits<std::int64_t>::max();
constexpr auto least = std::numeric_limits<std::int64_t>::min();

views::DisplayList drawn(const Sparkline& chart, double width, double height, double scale) {
    views::Surface card = mediumCard;
    card.scale = scale;
    return rendered(views::View{chart}.frame(views::FixedFrame{.width = width, .height = height}),
                    card);
}

const std::vector<Sparkline> charts{{{{0, 10}, {10, 20}}, {}, blue},
                                    {{{0, 10}, {10, 20}}, 30, blue},
                                    {{{0, 0}, {10, 10}}, -10, blue},
                                    {{{0, 10}, {10, 20}}, 12.5, blue},
                                    {{{5, 7}, {6, 7}, {9, 7}}, {}, blue},
                                    {{{5, 7}, {9, 7}}, 7, blue},
                                    {{{-20, -30}, {-10, -10}, {0, -20}}, {}, blue},
                                    {{{0, 0}, {30, 1}, {10, 2}, {40, 4}}, {}, blue},
                                    {{{0, 4}, {-10, 0}, {20, 2}, {10, 3}}, {}, blue},
                                    {{{0, -1e308}, {1, 1e308}, {2, 0}}, {}, blue},
                                    {{{0, -1e308}, {2, 0}}, 1e308, blue},
                                    {{{least, 0}, {least / 2, 1}, {most, 2}, {-1, 4}}, {}, blue},
                                    // Without a time span, with a threshold or not:
                                    {{}, 1.5, blue},
                                    {{{5, 1}}, {}, blue},
                                    {{{5, 1}, {5, 2}}, 1.5, blue},
                                    {{{5, 1}, {9, 3}, {5, 2}}, {}, blue},
                                    {{{6, 1}, {5, 2}}, {}, blue},
                                    {{{most, 1}, {least, 2}}, {}, blue},
                                    {{{least, 1}, {most, 2}}, {}, blue},
                                    {{{least, 1}, {0, 2}}, {}, blue},
                                    {{{-1, 1}, {most, 2}}, {}, blue}};

/// The element fills the size, to the next pixel, with the reference's path of 100 x 50 points;
/// what runs along the bottom stays one point above it.
void expectGrown(const views::Element& element, const views::Element& reference,
                 const views::Size& wanted) {
    const views::Size size = element.frame.size;
    EXPECT_NEAR(size.width, wanted.width, 1);
    EXPECT_NEAR(size.height, wanted.height, 1);
    const auto& path = std::get<views::PathElement>(element.content);
    const auto& other = std::get<views::PathElement>(reference.content);
    EXPECT_EQ(path.paint, other.paint);
    ASSERT_EQ(path.path.commands().size(), other.path.commands().size());
    for (std::size_t i = 0; i < path.path.commands().size(); ++i) {
        const auto &to = path.path.commands()[i].to, &from = other.path.commands()[i].to;
        EXPECT_NEAR(to.x, from.x * size.width / 100, 0.01);
        EXPECT_NEAR(to.y, from.y == 49 ? size.height - 1 : from.y * size.height / 50, 0.01);
    }
}

/// In a frame of 100 x 50 points, so that half a point is a hundredth of its height.
TEST(Sparkline, ScalesTheSeriesAndItsThresholdIntoItsFrame) {
    std::ostringstream dump;
    for (const Sparkline& chart : charts) {
        dump << "==";
        for (const auto& point : chart.points) dump << ' ' << point.t << ':' << point.v;
        if (chart.threshold) dump << ", threshold " << *chart.threshold;
        const std::string list = Dump{drawn(chart, 100, 50, 2)}.text();
        dump << list.substr(list.find('\n')) << '\n';
    }
    expectGolden("sparkline.txt", dump.str());
}

TEST(Sparkline, GrowsWithItsFrameAtEveryScale) {
    for (const Sparkline& chart : charts) {
        const auto reference = drawn(chart, 100, 50, 2);
        for (const double scale : {1.0, 2.0, 3.0}) {
            for (const double width : {1.0, 7.3, 131.75, 312.0}) {
                for (const double height : {1.5, 33.3, 67.59, 132.0}) {
                    const auto list = drawn(chart, width, height, scale);
                    ASSERT_EQ(list.elements.size(), reference.elements.size());
                    for (std::size_t i = 0; i < list.elements.size(); ++i)
                        expectGrown(list.elements[i], reference.elements[i], {width, height});
                }
            }
        }
    }
}

}  // namespace
}  // namespace tessary::presentation
