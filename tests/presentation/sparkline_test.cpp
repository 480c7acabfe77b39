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

/// In a frame of 100 x 50 points, so that half a point is a hundredth of its height.
TEST(Sparkline, ScalesTheSeriesAndItsThresholdIntoItsFrame) {
    std::ostringstream dump;
    for (const Sparkline& chart : charts) {
        dump << "==";
        for (const auto& point : chart.points) dump << ' ' << point.t << ':' << point.v;
        if (chart.threshold) dump << ", threshold " << *chart.threshold;
        const std::string list =
            Dump{rendered(views::View{chart}.frame(views::FixedFrame{100, 50}))}.text();
        dump << list.substr(list.find('\n')) << '\n';
    }
    expectGolden("sparkline.txt", dump.str());
}

}  // namespace
}  // namespace tessary::presentation
