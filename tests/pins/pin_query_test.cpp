#include "pins/pin_query.h"

#include <gtest/gtest.h>

#include "metric/metric_pin.h"
#include "support/container.h"

namespace tessary::pins {
namespace {

/// Compared one with the other, these would take minutes.
TEST(PinQuery, FindsTheFirstOfManyAmongMany) {
    constexpr std::size_t others = 19'999;
    std::vector<std::string> composed, decomposed;
    for (std::size_t i = 0; i <= others; ++i) {
        composed.push_back("\u00E9" + std::to_string(i % others));
        decomposed.push_back("e\u0301" + std::to_string(i % others));
    }
    const Container container;
    container.put("metrics", examplePins(composed));
    const auto found = PinQuery<metric::MetricPin>{container.source()}.entities(decomposed);
    ASSERT_EQ(found.size(), decomposed.size());
    for (std::size_t i = 0; i <= others; ++i)
        ASSERT_EQ(found[i].name, "#" + std::to_string(i % others));
}

}  // namespace
}  // namespace tessary::pins
