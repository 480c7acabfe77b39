#include "presentation/sparkline.h"

#include <gtest/gtest.h>

#include "support/golden.h"
#include "support/rendering.h"

namespace tessary::presentation {
namespace {

constexpr views::Color blue = views::Color::rgb8(1, 2, 253);
/// A case is the points and, where there is one, the threshold; in a frame of 100 x 50 points, so
/// that half a point is a hundredth of its height.
TEST(Sparkline, ScalesTheSeriesAndItsThresholdIntoItsFrame) {
    expectTranscript("sparkline.txt", [](const std::string& line) {
        Sparkline chart{{}, {}, blue};
        for (const std::string& word : words(line)) {
            const auto colon = word.find(':');
            if (colon == word.npos)
                chart.threshold = std::stod(word);
            else
                chart.points.push_back({std::stoll(word), std::stod(word.substr(colon + 1))});
        }
        const auto list = Dump{rendered(views::View{chart}.frame(views::FixedFrame{100, 50}))};
        return list.text().substr(list.text().find('\n') + 1);
    });
}

}  // namespace
}  // namespace tessary::presentation
